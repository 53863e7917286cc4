#pragma once

#include <optional>
#include <string>
#include <vector>

// The search for the font set that labels and lists fall back to. A font set of the toolkit is a list of font
// names, and is complete when the fonts found cover all character sets of the locale. The toolkit's own
// default is complete only where the usual fonts are installed, so the process looks for one that misses few.

// What the most complete font sets still miss: for each of them a line that names it, then one line for each
// missing character set. Sets that could not be made are among them. Empty before ConfigValidDefaultFontSet,
// which alone writes it, and when the configured set or the toolkit's default is complete. A searched set
// that is made and misses as few as the best so far empties it; the lines that follow it are those of sets
// that could not be made and miss as few or fewer. So the list can hold lines although a set was chosen.
extern std::vector<std::string>& missingCharSets;
std::vector<std::string>& GetMissingCharSets();

// Searches the fonts of `display`, which is open, fills missingCharSets, and puts the chosen font set into
// the display's resource database, where the toolkit looks for its default. A complete set that is
// configured, or the toolkit's own when it is complete, stays in force and leaves the database as it is.
void ConfigValidDefaultFontSet();

// What an attempt to make a font set has shown.
struct FontSetAttempt {
    // Whether there is a font set at all; an incomplete one still is one.
    bool made = false;
    // The line height of the set, in pixels; 0 when none was made.
    unsigned int height = 0;
    std::vector<std::string> missingCharSets;
};

// Where the search finds its fonts: the display, or the test's own.
class FontSource {
public:
    FontSource() = default;
    FontSource(FontSource const&) = delete;
    FontSource& operator=(FontSource const&) = delete;
    virtual ~FontSource() = default;

    // The base font list that is configured as the default; nothing when there is none.
    virtual std::optional<std::string> ConfiguredFontSet() = 0;
    virtual FontSetAttempt TryFontSet(std::string const& baseFontList) = 0;
    // At most `most` names of fonts that match `pattern`, in the source's order.
    virtual std::vector<std::string> ListFonts(std::string const& pattern, int most) = 0;
};

struct FontSetChoice {
    // The font set to put in force; nothing when what is in force stays.
    std::optional<std::string> fontSet;
    // For missingCharSets.
    std::vector<std::string> missingCharSets;
};

// The choice itself. The configured set and the toolkit's default come first; when neither is complete, each
// family at one size that the source lists is tried once. A candidate must be made and must miss no more
// character sets than the best attempt so far. A complete one is no candidate, unless the toolkit's default
// failed without missing any. The candidate with the smallest line height is chosen. The time is linear in
// the number of names, but for the attempts themselves.
FontSetChoice ChooseDefaultFontSet(FontSource& source);
