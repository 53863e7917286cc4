#include "app/DefaultFontSet.h"

#include "app/ProcessState.h"

#include <X11/Intrinsic.h>
#include <X11/StringDefs.h>
#include <cstdint>
#include <limits>
#include <memory>
#include <unordered_set>
#include <utility>

// The choice runs over three kinds of candidates: the configured set, the toolkit's own default, and one for
// each family at one size that the display has. The measure is the number of missing character sets; the
// lines about the sets with the lowest number are kept as the choice goes on. A set that misses nothing ends
// the choice when it is one of the first two. A searched one does not lower the number, and with a number
// above 0 it is passed over. The number is 0 only when the toolkit's default could not be made although
// nothing was reported as missing: what counts then are complete sets alone, and the search may choose one.

namespace {

constexpr char cToolkitDefault[] = "-*-*-*-R-*-*-*-120-*-*-*-*,*";
constexpr char cSearchPattern[] = "-*-*-*-r-*-*-*-120-*-*-*-*";
constexpr int cMostFontNames = 1000;
// The fields of a font's name in front of its character set, each behind a hyphen.
constexpr int cHyphensBeforeCharacterSet = 13;

class Chooser {
public:
    explicit Chooser(FontSource& source) : m_source(source) {}

    FontSetChoice Choose() {
        if (!ConfiguredIsComplete() && !ToolkitDefaultIsComplete()) Search();
        return std::move(m_choice);
    }

private:
    static constexpr std::size_t cNoCountYet = std::numeric_limits<std::int32_t>::max();

    static bool IsComplete(FontSetAttempt const& attempt) {
        return attempt.made && attempt.missingCharSets.empty();
    }

    bool ConfiguredIsComplete() {
        std::optional<std::string> const configured = m_source.ConfiguredFontSet();
        if (!configured) return false;
        FontSetAttempt const attempt = m_source.TryFontSet(*configured);
        if (!attempt.missingCharSets.empty()) NoteMissing("Resource font type: " + *configured, attempt);
        return IsComplete(attempt);
    }

    bool ToolkitDefaultIsComplete() {
        FontSetAttempt const attempt = m_source.TryFontSet(cToolkitDefault);
        if (IsComplete(attempt)) {
            m_choice.missingCharSets.clear();
            return true;
        }
        NoteMissing(std::string("Default Xt font type: ") + cToolkitDefault, attempt);
        return false;
    }

    // Keeps the lines about the sets that miss the fewest. A set that could not be made counts as well.
    void NoteMissing(std::string line, FontSetAttempt const& attempt) {
        std::size_t const count = attempt.missingCharSets.size();
        if (count > m_lowestCount) return;
        std::vector<std::string>& lines = m_choice.missingCharSets;
        if (count < m_lowestCount) lines.clear();
        m_lowestCount = count;
        lines.push_back(std::move(line));
        lines.insert(lines.end(), attempt.missingCharSets.begin(), attempt.missingCharSets.end());
    }

    void Search() {
        std::unordered_set<std::string> tried;
        for (std::string const& name : m_source.ListFonts(cSearchPattern, cMostFontNames)) {
            std::optional<std::string> const fontSet = WithoutCharacterSet(name);
            if (fontSet && tried.insert(*fontSet).second) Consider(*fontSet);
        }
    }

    // Leaves the character set open: "-a-b-...-60-iso8859-1" becomes "-a-b-...-60-*,*". Nothing for a name of
    // fewer fields, such as an alias.
    static std::optional<std::string> WithoutCharacterSet(std::string const& name) {
        std::size_t end = 0;
        for (int hyphens = 0; hyphens < cHyphensBeforeCharacterSet; ++hyphens) {
            std::size_t const hyphen = name.find('-', end);
            if (hyphen == std::string::npos) return std::nullopt;
            end = hyphen + 1;
        }
        return name.substr(0, end) + "*,*";
    }

    void Consider(std::string const& fontSet) {
        FontSetAttempt const attempt = m_source.TryFontSet(fontSet);
        if (!attempt.missingCharSets.empty()) NoteMissing("Search font type: " + fontSet, attempt);
        if (!attempt.made || attempt.missingCharSets.size() != m_lowestCount) return;
        // As good as any other, so it can be put in force, and what it misses is no news.
        m_choice.missingCharSets.clear();
        // Height rules among all candidates, also those of an earlier, higher count: a dialog whose lines
        // grow no longer fits its screen, which is worse than a few more missing characters.
        if (attempt.height >= m_chosenHeight) return;
        m_choice.fontSet = fontSet;
        m_chosenHeight = attempt.height;
    }

    FontSource& m_source;
    FontSetChoice m_choice;
    std::size_t m_lowestCount = cNoCountYet;
    unsigned int m_chosenHeight = std::numeric_limits<unsigned int>::max();
};

struct FreeStringList {
    void operator()(char** list) const { XFreeStringList(list); }
};
struct FreeFontNames {
    void operator()(char** names) const { XFreeFontNames(names); }
};
struct FreeFontSet {
    void operator()(XFontSet fontSet) const { XFreeFontSet(display, fontSet); }
};

class DisplayFonts : public FontSource {
public:
    std::optional<std::string> ConfiguredFontSet() override {
        XrmName names[] = {XrmStringToName("xtDefaultFontSet"), NULLQUARK};
        XrmClass classes[] = {XrmStringToClass("XtDefaultFontSet"), NULLQUARK};
        XrmRepresentation type = NULLQUARK;
        XrmValue value{};
        if (!XrmQGetResource(XtDatabase(display), names, classes, &type, &value)) return std::nullopt;
        if (type != XrmStringToRepresentation(XtRString) || !value.addr) return std::nullopt;
        return std::string(value.addr);
    }

    FontSetAttempt TryFontSet(std::string const& baseFontList) override {
        char** missing = nullptr;
        int count = 0;
        char* replacement = nullptr;
        std::unique_ptr<_XOC, FreeFontSet> const fontSet(
            XCreateFontSet(display, baseFontList.c_str(), &missing, &count, &replacement));
        std::unique_ptr<char*, FreeStringList> const owner(missing);
        FontSetAttempt attempt;
        if (missing) attempt.missingCharSets.assign(missing, missing + count);
        if (!fontSet) return attempt;
        attempt.made = true;
        attempt.height = XExtentsOfFontSet(fontSet.get())->max_logical_extent.height;
        return attempt;
    }

    std::vector<std::string> ListFonts(std::string const& pattern, int most) override {
        int count = 0;
        std::unique_ptr<char*, FreeFontNames> const names(XListFonts(display, pattern.c_str(), most, &count));
        if (!names) return {};
        return {names.get(), names.get() + count};
    }
};

void PutDefaultFontSet(std::string const& fontSet) {
    XrmDatabase database = XtDatabase(display);
    XrmPutStringResource(&database, "XtDefaultFontSet", fontSet.c_str());
}

} // namespace

std::vector<std::string>& missingCharSets = *new std::vector<std::string>;

std::vector<std::string>& GetMissingCharSets() {
    return missingCharSets;
}

FontSetChoice ChooseDefaultFontSet(FontSource& source) {
    return Chooser(source).Choose();
}

void ConfigValidDefaultFontSet() {
    missingCharSets.clear();
    DisplayFonts fonts;
    FontSetChoice choice = ChooseDefaultFontSet(fonts);
    missingCharSets = std::move(choice.missingCharSets);
    if (choice.fontSet) PutDefaultFontSet(*choice.fontSet);
}
