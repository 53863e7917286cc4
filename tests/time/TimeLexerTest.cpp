#include "time/TimeLexer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// Writes down the tokens that it is given.
class RecordingAcceptor final : public TimeLexemeAcceptor {
public:
    void AcceptReservedWord(ConstData word, TimeParsingAction const& action) override {
        m_log << MakeString(word) << '=' << action.symbol << '/' << action.number << ' ';
    }
    void AcceptOrdinaryWord(ConstData word) override { m_log << "word:" << MakeString(word) << ' '; }
    void AcceptWordOverflow() override { m_log << "overflow "; }
    void AcceptOneDigit(int value) override { m_log << "1:" << value << ' '; }
    void AcceptTwoDigits(int value) override { m_log << "2:" << value << ' '; }
    void AcceptThreeDigits(int value) override { m_log << "3:" << value << ' '; }
    void AcceptFourDigits(int value) override { m_log << "4:" << value << ' '; }
    void AcceptOtherNumeral() override { m_log << "numeral "; }
    void AcceptCharacter(unsigned char character) override { m_log << '\'' << character << "' "; }
    void AcceptEnd() override { m_log << "end"; }

    std::string Log() const { return m_log.str(); }

private:
    std::ostringstream m_log;
};

// The tokens of a text that comes in the pieces between the given positions.
std::string Tokens(std::string const& text, std::vector<std::size_t> cuts) {
    RecordingAcceptor acceptor;
    TimeLexer lexer(acceptor);
    lexer.Start();
    cuts.push_back(text.size());
    std::size_t from = 0;
    for (std::size_t const to : cuts) {
        std::string const piece = text.substr(from, to - from);
        lexer.Receive(MakeConstData(piece));
        from = to;
    }
    lexer.ReceiveEnd();
    return acceptor.Log();
}

std::string Tokens(std::string const& text) {
    return Tokens(text, {});
}

struct Corpus {
    char const* text;
    char const* tokens;
};

Corpus const cCorpus[] = {
    {"Sun, 02 Jan 2011 08:05:09 +0530", "sun=0/0 ',' 2:2 jan=1/1 4:2011 2:8 ':' 2:5 ':' 2:9 '+' 4:530 end"},
    {"  \t\r\n\v\f", "end"},
    {"", "end"},
    {"2Jan11", "1:2 jan=1/1 2:11 end"},
    {"0 00 000 0000 00000 123456789012345678901234567890", "1:0 2:0 3:0 4:0 numeral numeral end"},
    {"january abcdefgh abcdefghi ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefgh gmt",
     "word:january word:abcdefgh overflow overflow gmt=6/0 end"},
    {"--,;", "'-' '-' ',' ';' end"},
    {"\x80z\xff", "'\x80' z=7/0 '\xff' end"},
    {"gm t", "word:gm t=7/-25200 end"},
};

} // namespace

TEST(TimeLexer, CutsATextIntoTokens) {
    for (Corpus const& corpus : cCorpus) EXPECT_EQ(Tokens(corpus.text), corpus.tokens);
}

TEST(TimeLexer, FindsTheSameTokensHoweverTheTextIsCut) {
    for (Corpus const& corpus : cCorpus) {
        std::string const text = corpus.text;
        std::string const whole = Tokens(text);
        std::vector<std::size_t> everywhere;
        for (std::size_t cut = 0; cut <= text.size(); ++cut) {
            EXPECT_EQ(Tokens(text, {cut}), whole) << "cut at " << cut;
            EXPECT_EQ(Tokens(text, {cut, cut}), whole) << "an empty piece at " << cut;
            everywhere.push_back(cut);
        }
        EXPECT_EQ(Tokens(text, everywhere), whole);
    }
}

TEST(TimeLexer, TakesEveryByteThatIsNoLetterDigitOrSpaceAsACharacter) {
    for (int value = 0; value < 256; ++value) {
        auto const byte = static_cast<char>(value);
        std::string const text(1, byte);
        std::string expected = "'" + text + "' end";
        if (value == ' ' || (value >= 9 && value <= 13)) expected = "end";
        if (value >= '0' && value <= '9') expected = "1:" + text + " end";
        bool const isLetter = (value >= 'a' && value <= 'z') || (value >= 'A' && value <= 'Z');
        if (isLetter) {
            EXPECT_EQ(Tokens(text).find(static_cast<char>(value | 0x20)),
                      value == 'j' || value == 'J' ? 5U : 0U);
            continue;
        }
        EXPECT_EQ(Tokens(text), expected) << value;
    }
}

TEST(TimeLexer, ForgetsATokenUnderWayWhenItIsStartedAnew) {
    RecordingAcceptor acceptor;
    TimeLexer lexer(acceptor);
    lexer.Start();
    lexer.Receive("12"_data);
    lexer.Start();
    lexer.Receive("3"_data);
    lexer.ReceiveEnd();
    EXPECT_EQ(acceptor.Log(), "1:3 end");
}

TEST(TimeLexer, KnowsEveryReservedWord) {
    Corpus const words[] = {
        {"sun", "0/0"},      {"mon", "0/1"},      {"tue", "0/2"},      {"wed", "0/3"},
        {"thu", "0/4"},      {"fri", "0/5"},      {"sat", "0/6"},      {"jan", "1/1"},
        {"feb", "1/2"},      {"mar", "1/3"},      {"apr", "1/4"},      {"may", "1/5"},
        {"jun", "1/6"},      {"jul", "1/7"},      {"aug", "1/8"},      {"sep", "1/9"},
        {"oct", "1/10"},     {"nov", "1/11"},     {"dec", "1/12"},     {"gmt", "6/0"},
        {"ut", "6/0"},       {"edt", "6/-14400"}, {"est", "6/-18000"}, {"cdt", "6/-18000"},
        {"cst", "6/-21600"}, {"mdt", "6/-21600"}, {"mst", "6/-25200"}, {"pdt", "6/-25200"},
        {"pst", "6/-28800"}, {"a", "7/3600"},     {"b", "7/7200"},     {"c", "7/10800"},
        {"d", "7/14400"},    {"e", "7/18000"},    {"f", "7/21600"},    {"g", "7/25200"},
        {"h", "7/28800"},    {"i", "7/32400"},    {"k", "7/36000"},    {"l", "7/39600"},
        {"m", "7/43200"},    {"n", "7/-3600"},    {"o", "7/-7200"},    {"p", "7/-10800"},
        {"q", "7/-14400"},   {"r", "7/-18000"},   {"s", "7/-21600"},   {"t", "7/-25200"},
        {"u", "7/-28800"},   {"v", "7/-32400"},   {"w", "7/-36000"},   {"x", "7/-39600"},
        {"y", "7/-43200"},   {"z", "7/0"}};
    EXPECT_EQ(std::size(words), 54U);
    EXPECT_EQ(TimeWords().Size(), 54U);
    for (Corpus const& word : words) {
        std::string const text = word.text;
        EXPECT_EQ(Tokens(text), text + "=" + word.tokens + " end");
    }
    EXPECT_EQ(Tokens("j"), "word:j end");
}
