#pragma once

#include <optional>
#include <string>
#include <vector>

// The search for the font set that labels and lists fall back to. A font set of the toolkit is a list of font
// names, and is complete when the fonts found cover all character sets of the locale. The default one is
// complete on a machine with the usual fonts only, so the process looks for one that misses few.

// Character sets that the most complete font set still misses: a line that names the set, then one line for
// each missing character set; font sets that are equally incomplete follow in the same way. Empty when
// nothing is missing, when the search has found a set as good as the configured and the default one, and
// before ConfigValidDefaultFontSet. Written by that function only.
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
// family at one size that the source lists is tried once. A candidate must be made, and must miss as few
// character sets as the best attempt so far; the one with the smallest line height among the candidates is
// chosen. The time is linear in the number of names, but for the attempts themselves.
FontSetChoice ChooseDefaultFontSet(FontSource& source);
