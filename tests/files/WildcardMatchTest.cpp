#include "files/WildcardMatch.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

bool Matches(std::string const& name, std::string const& pattern) {
    return MatchesWildcard(MakeConstData(name), MakeConstData(pattern));
}

// The meaning of a pattern as it is told, byte by byte.
bool MatchesByDefinition(std::string const& name, std::string const& pattern) {
    if (pattern.empty()) return name.empty();
    std::string const rest = pattern.substr(1);
    if (pattern[0] == '*')
        return MatchesByDefinition(name, rest) ||
               (!name.empty() && MatchesByDefinition(name.substr(1), pattern));
    return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
           MatchesByDefinition(name.substr(1), rest);
}

// All texts of up to `size` bytes of the alphabet.
std::vector<std::string> Texts(std::string const& alphabet, std::size_t size) {
    std::vector<std::string> texts{""};
    for (std::size_t index = 0; index < texts.size(); ++index) {
        if (texts[index].size() == size) break;
        for (char const letter : alphabet) texts.push_back(texts[index] + letter);
    }
    return texts;
}

} // namespace

TEST(WildcardMatch, TakesTheWholeName) {
    struct {
        char const* name;
        char const* pattern;
        bool matches;
    } const cases[] = {
        {"a.log", "*.log", true},  {".log", "*.log", true},
        {"a.LOG", "*.log", false}, {"a.log2", "*.log", false},
        {"ab", "a?", true},        {"a", "a?", false},
        {"abc", "a?", false},      {"", "", true},
        {"a", "", false},          {"", "*", true},
        {"", "?", false},          {"", "**", true},
        {"abc", "abc", true},      {"abc", "ab", false},
        {"ab", "abc", false},      {"abc", "*", true},
        {"abc", "***", true},      {"abc", "a*c", true},
        {"abc", "*b*", true},      {"abc", "?*?*?", true},
        {"ab", "?*?*?", false},    {"aab", "*ab", true},
        {"abab", "*ab", true},     {"abac", "*ab*ac", true},
        {"abac", "*ac*ab", false}, {"mississippi", "*issip*", true},
        {"a*b", "a*b", true},      {"*", "?", true},
        {"a", "*a*", true},        {"a\\b", "a\\b", true},
        {"[a]", "[a]", true},      {"a", "[a]", false},
    };
    for (auto const& [name, pattern, matches] : cases)
        EXPECT_EQ(Matches(name, pattern), matches) << name << " by " << pattern;
}

TEST(WildcardMatch, AgreesWithItsDefinitionOnAllShortTexts) {
    std::vector<std::string> const names = Texts("ab*", 5);
    for (std::string const& pattern : Texts("ab?*", 5))
        for (std::string const& name : names)
            ASSERT_EQ(Matches(name, pattern), MatchesByDefinition(name, pattern))
                << name << " by " << pattern;
}

TEST(WildcardMatch, TakesEachByteForItself) {
    for (int first = 0; first < 256; ++first) {
        std::string const name(1, static_cast<char>(first));
        EXPECT_TRUE(Matches(name, "?")) << first;
        EXPECT_TRUE(Matches(name, "*")) << first;
        EXPECT_TRUE(Matches(name, name)) << first;
        if (first == '?' || first == '*') continue;
        for (int second = 0; second < 256; ++second)
            if (second != first) {
                EXPECT_FALSE(Matches(std::string(1, static_cast<char>(second)), name))
                    << first << ' ' << second;
            }
    }
}

TEST(WildcardMatch, CountsTheBytesOfACharacterOneByOne) {
    EXPECT_FALSE(Matches("\xC3\xA4", "?"));
    EXPECT_TRUE(Matches("\xC3\xA4", "??"));
}

TEST(WildcardMatch, TakesNoLongerThanBothSizesMultiplied) {
    // Each star could be tried at each byte of the name: 10 000 to the power of 2 500, for who does so.
    std::string pattern;
    for (int count = 0; count < 2500; ++count) pattern += "*a";
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Matches(std::string(10000, 'a'), pattern + "b"));
    EXPECT_TRUE(Matches(std::string(10000, 'a') + "b", pattern + "b"));
    EXPECT_FALSE(Matches(std::string(1000000, 'a'), "*" + std::string(20, 'a') + "b"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}
