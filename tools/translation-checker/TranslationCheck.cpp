#include "tools/translation-checker/TranslationCheck.h"

#include "format/FormatBindings.h"
#include "format/FormatOverrideSet.h"
#include "foundation/Exceptions.h"
#include "text/IsUTF8.h"
#include "text/LocalText.h"
#include "text/Transcoder.h"
#include "tools/translation-checker/Template.h"
#include "tools/translation-checker/Texts.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <set>

// A file is looked at in two ways, both with the program's own reader, so that there is no other opinion of
// what a line means. A set over the whole file knows what the program will find; a set over a single line
// knows what that line adds. Both hold views into the same contents.

namespace TranslationChecker {

namespace {

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view cBlanks = " ";

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(cBlanks) == std::string_view::npos;
}

std::string_view LeadingBlanks(std::string_view text) {
    return text.substr(0, std::min(text.find_first_not_of(cBlanks), text.size()));
}

std::string_view TrailingBlanks(std::string_view text) {
    return text.substr(text.find_last_not_of(cBlanks) + 1);
}

// Equal for texts that differ only in blanks and in the case of ASCII letters.
std::string Simplified(std::string_view text) {
    std::string simple;
    for (char const character : text) {
        if (character == ' ') continue;
        bool const isCapital = character >= 'A' && character <= 'Z';
        simple += isCapital ? static_cast<char>(character - 'A' + 'a') : character;
    }
    return simple;
}

std::string Braced(std::string_view variable) {
    return "{" + std::string(variable) + "}";
}

bool Has(std::vector<std::string_view> const& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsKnownReserved(UStringRef<UTF8> const& name) {
    try {
        FormatExpressionValue(name, {});
        return true;
    } catch (UndefinedFormatVariable const&) {
        return false;
    }
}

// "U+00E4", with the character in front.
std::string NameOf(UTF32::Unit character) {
    AutoUString<UTF8> const text =
        Transcode<UTF8, UTF32>(UStringRef<UTF32>(UTF32(), &character, &character + 1));
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", character);
    return Quoted(ViewOf(text.Ref())) + " (" + code + ")";
}

// Which characters the encoding of the locale has.
class LocaleCharacters {
public:
    bool Has(UTF32::Unit character);
    std::string EncodingName() const;

private:
    std::map<UTF32::Unit, bool> m_known;
};

bool LocaleCharacters::Has(UTF32::Unit character) {
    auto const [entry, isNew] = m_known.try_emplace(character, true);
    if (!isNew) return entry->second;
    AutoUString<UTF8> const text =
        Transcode<UTF8, UTF32>(UStringRef<UTF32>(UTF32(), &character, &character + 1));
    try {
        UnixPlatform::ToLocal8Bit(text.Ref());
    } catch (UnixPlatform::WideToMultiByteConvertError const&) {
        entry->second = false;
    }
    return entry->second;
}

std::string LocaleCharacters::EncodingName() const {
    IANANamedTextEncoding const encoding = UnixPlatform::IANAEncodingName(Local8Bit());
    return std::string(encoding.Name().begin(), encoding.Name().end());
}

// One line that the program takes as an entry.
struct Entry {
    std::size_t line;
    std::string_view key;
    std::string_view value;
    // What stands between the first tab and the last.
    std::string_view lost;
};

class Checker {
public:
    Checker(std::string_view contents, std::span<FormatText const> texts, CheckOptions const& options);

    CheckResult Check();

private:
    void ReadLines();
    void CheckLine(std::size_t line, std::string_view text);
    void CheckLineWithoutEntry(std::size_t line, std::string_view text);
    void CheckEntry(Entry const& entry);
    void CheckKey(Entry const& entry);
    void CheckUse(Entry const& entry);
    void CheckRepetition(Entry const& entry);
    void CheckValue(Entry const& entry);
    void CheckVariables(Entry const& entry, std::vector<std::string_view> const& allowed);
    void CheckVariable(Entry const& entry, UStringRef<UTF8> const& name,
                       std::vector<std::string_view> const& allowed);
    void CheckBlanks(Entry const& entry);
    void CheckCharacters(Entry const& entry);
    void CheckMissing();
    bool IsInCompanion(std::string_view key) const;
    Entry const& EntryOfValue(std::string_view value) const;
    void Error(std::size_t line, std::string sentence) {
        m_result.findings.push_back({line, true, std::move(sentence)});
    }
    void Warning(std::size_t line, std::string sentence) {
        m_result.findings.push_back({line, false, std::move(sentence)});
    }

    std::string_view m_contents;
    std::span<FormatText const> m_texts;
    CheckOptions m_options;
    FormatOverrideSet m_set;
    std::vector<std::unique_ptr<FormatOverrideSet>> m_companions;
    std::set<std::string_view> m_keys;
    // The keys by their simplified texts.
    std::map<std::string, std::string_view> m_similarKeys;
    std::vector<Entry> m_entries;
    // For each key its first entry.
    std::map<std::string_view, std::size_t> m_firstEntries;
    LocaleCharacters m_localeCharacters;
    CheckResult m_result;
};

Checker::Checker(std::string_view contents, std::span<FormatText const> texts, CheckOptions const& options)
    : m_contents(contents), m_texts(texts), m_options(options), m_set(ViewOf(contents), ""_utf8) {
    for (std::string_view const companion : options.companions)
        m_companions.push_back(std::make_unique<FormatOverrideSet>(ViewOf(companion), ""_utf8));
    for (FormatText const& text : texts) {
        if (!IsKey(text.text)) continue;
        m_keys.insert(text.text);
        m_similarKeys.emplace(Simplified(text.text), text.text);
    }
}

CheckResult Checker::Check() {
    if (m_contents.starts_with(cByteOrderMark))
        Error(1,
              "the file begins with a byte order mark, which the program takes for a part of the first key; "
              "save it as UTF-8 without one");
    ReadLines();
    for (Entry const& entry : m_entries) CheckEntry(entry);
    std::stable_sort(m_result.findings.begin(), m_result.findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
    CheckMissing();
    return std::move(m_result);
}

// A carriage return and a line feed are one line's end to an editor.
void Checker::ReadLines() {
    std::string_view rest = m_contents;
    if (rest.starts_with(cByteOrderMark)) rest.remove_prefix(cByteOrderMark.size());
    for (std::size_t line = 1; !rest.empty(); ++line) {
        std::size_t const size = std::min(rest.find_first_of("\r\n"), rest.size());
        CheckLine(line, rest.substr(0, size));
        bool const isPair = rest.substr(size).starts_with("\r\n");
        rest.remove_prefix(std::min(size + (isPair ? 2 : 1), rest.size()));
    }
}

void Checker::CheckLine(std::size_t line, std::string_view text) {
    if (!IsUTF8(ViewOf(text))) Error(line, "the line is not UTF-8");
    FormatOverrideSet const set(ViewOf(text), ""_utf8);
    if (set.Overrides().empty()) return CheckLineWithoutEntry(line, text);
    std::string_view const key = ViewOf(set.Overrides()[0].first);
    std::string_view const value = ViewOf(set.Overrides()[0].second);
    std::size_t const betweenTabs = text.size() - key.size() - value.size();
    std::string_view const lost = betweenTabs > 1 ? text.substr(key.size() + 1, betweenTabs - 2) : "";
    m_entries.push_back({line, key, value, lost});
    m_firstEntries.try_emplace(key, m_entries.size() - 1);
}

void Checker::CheckLineWithoutEntry(std::size_t line, std::string_view text) {
    if (text.starts_with('\t'))
        Error(line, "the line begins with a tab, so that the program passes over it");
    else if (!IsBlank(text) && !text.starts_with('#'))
        Error(line, "the line has no tab, so that the program passes over it: " + QuotedShort(text) +
                        "; begin a comment with #");
}

void Checker::CheckEntry(Entry const& entry) {
    if (entry.lost.find_first_not_of("\t ") != std::string_view::npos)
        Error(entry.line,
              "the line has several tabs, and what stands between them is lost: " + QuotedShort(entry.lost));
    CheckKey(entry);
    CheckUse(entry);
    CheckRepetition(entry);
    CheckValue(entry);
}

void Checker::CheckKey(Entry const& entry) {
    if (m_keys.contains(entry.key)) return;
    auto const similar = m_similarKeys.find(Simplified(entry.key));
    if (similar == m_similarKeys.end())
        Error(entry.line, "the program has no text " + QuotedShort(entry.key));
    else
        Error(entry.line,
              "the program has no text " + Quoted(entry.key) + "; it writes it " + Quoted(similar->second));
}

void Checker::CheckUse(Entry const& entry) {
    if (m_options.companionsComeFirst && IsInCompanion(entry.key))
        Warning(entry.line, "the general translation has this text, too, and is asked first");
}

bool Checker::IsInCompanion(std::string_view key) const {
    return std::any_of(m_companions.begin(), m_companions.end(),
                       [&](auto const& companion) { return companion->HasOverride(ViewOf(key)); });
}

// Which of several entries counts is decided by the set.
void Checker::CheckRepetition(Entry const& entry) {
    Entry const& first = m_entries[m_firstEntries.at(entry.key)];
    FormatOverride const* const winner = m_set.Find(ViewOf(entry.key));
    if (first.line == entry.line || !winner) return;
    std::string const repetition = "line " + std::to_string(first.line) + " translates this text already";
    if (entry.value == first.value) return Warning(entry.line, repetition + ", and in the same way");
    std::string_view const value = ViewOf(winner->second);
    Error(entry.line, repetition + "; the program takes the translation that sorts first, " +
                          QuotedShort(value) + " in line " + std::to_string(EntryOfValue(value).line));
}

void Checker::CheckValue(Entry const& entry) {
    if (entry.value.empty()) return Warning(entry.line, "the translation is empty: nothing will be shown");
    if (m_keys.contains(entry.key)) CheckVariables(entry, VariablesOf(entry.key));
    CheckBlanks(entry);
    CheckCharacters(entry);
}

void Checker::CheckVariables(Entry const& entry, std::vector<std::string_view> const& allowed) {
    UStringRef<UTF8> const value = ViewOf(entry.value);
    std::vector<std::string_view> used;
    bool hasLoneBrace = false;
    try {
        for (UFormatIterator segment(value); segment != UFormatIterator::EndOf(value); ++segment) {
            if (!segment->isExpression) {
                hasLoneBrace = hasLoneBrace || segment->text.Contains('}');
                continue;
            }
            CheckVariable(entry, segment->text, allowed);
            used.push_back(ViewOf(segment->text));
        }
    } catch (BadFormatStringError const&) {
        return Error(entry.line, "a { has no } behind it, so that the text cannot be shown");
    }
    if (hasLoneBrace) Warning(entry.line, "a } has no { in front of it and will be shown as it stands");
    for (std::string_view const variable : allowed)
        if (!Has(used, variable)) Warning(entry.line, "the translation leaves out " + Braced(variable));
}

void Checker::CheckVariable(Entry const& entry, UStringRef<UTF8> const& name,
                            std::vector<std::string_view> const& allowed) {
    std::string const consequence = ", so that the text cannot be shown";
    if (name.empty()) return Error(entry.line, "a variable has no name, {}" + consequence);
    if (Has(allowed, ViewOf(name))) return;
    if (!IsFormatVariableNameReserved(name))
        Error(entry.line, "the original has no variable " + QuotedShort(Braced(ViewOf(name))) + consequence);
    else if (!IsKnownReserved(name))
        Error(entry.line, "there is no variable " + QuotedShort(Braced(ViewOf(name))) + consequence);
}

void Checker::CheckBlanks(Entry const& entry) {
    if (LeadingBlanks(entry.key) != LeadingBlanks(entry.value))
        Warning(entry.line, "the translation does not begin with the same blanks as the original");
    if (TrailingBlanks(entry.key) != TrailingBlanks(entry.value))
        Warning(entry.line, "the translation does not end with the same blanks as the original");
}

void Checker::CheckCharacters(Entry const& entry) {
    if (entry.value.find('\0') != std::string_view::npos)
        Error(entry.line, "the translation holds a NUL, where the text will end on the screen");
    if (!m_options.checkLocale || !IsUTF8(ViewOf(entry.value))) return;
    AutoUString<UTF32> const text = Transcode<UTF32, UTF8>(ViewOf(entry.value));
    std::string lacking;
    std::set<UTF32::Unit> told;
    for (UTF32::Unit const character : text.Ref()) {
        if (m_localeCharacters.Has(character) || !told.insert(character).second) continue;
        lacking += (lacking.empty() ? "" : ", ") + NameOf(character);
    }
    if (!lacking.empty())
        Error(entry.line,
              "the locale's encoding, " + m_localeCharacters.EncodingName() + ", cannot spell " + lacking);
}

void Checker::CheckMissing() {
    for (auto const& text : m_texts) {
        if (!IsKey(text.text)) continue;
        ++m_result.texts;
        if (m_set.HasOverride(ViewOf(text.text)))
            ++m_result.translated;
        else if (m_options.tellMissing && !IsInCompanion(text.text))
            Warning(0, "there is no translation of " + Quoted(text.text));
    }
}

// The entries stand in the order of their places in the contents.
Entry const& Checker::EntryOfValue(std::string_view value) const {
    auto const isBefore = [](char const* place, Entry const& entry) { return place < entry.value.data(); };
    return *std::prev(std::upper_bound(m_entries.begin(), m_entries.end(), value.data(), isBefore));
}

} // namespace

std::size_t CheckResult::CountErrors() const {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(),
                                                  [](Finding const& finding) { return finding.isError; }));
}

CheckResult CheckTranslation(std::string_view contents, std::span<FormatText const> texts,
                             CheckOptions const& options) {
    return Checker(contents, texts, options).Check();
}

} // namespace TranslationChecker
