#pragma once

#include "text/Data.h"
#include "time/WordLexeme.h"

#include <algorithm>

// A word of a language and what it stands for.
template <class Action>
struct ReservedWord {
    template <std::size_t size>
    constexpr ReservedWord(char const (&word)[size], Action const& meaning)
        : length(static_cast<unsigned char>(size - 1)), action(meaning) {
        static_assert(size - 1 <= WordLexeme::cCapacity);
        for (std::size_t index = 0; index < size - 1; ++index)
            letters[index] = static_cast<unsigned char>(word[index]);
    }

    ConstData Word() const { return ConstData(letters, letters + length); }
    // The order of Compare(ConstData, ConstData).
    constexpr bool operator<(ReservedWord const& other) const {
        return std::lexicographical_compare(letters, letters + length, other.letters,
                                            other.letters + other.length);
    }

    unsigned char letters[WordLexeme::cCapacity] = {};
    unsigned char length;
    Action action;
};

template <class Action>
class ReservedWordAcceptor {
public:
    // `word` is valid during the call.
    virtual void AcceptReservedWord(ConstData word, Action const& action) = 0;
    // A word that is not reserved.
    virtual void AcceptOrdinaryWord(ConstData word) = 0;
    // A word that is too long to be looked up.
    virtual void AcceptWordOverflow() = 0;

protected:
    ~ReservedWordAcceptor() = default;
};

// Looks each finished word up in a table, which must be sorted by Compare and outlive the lexeme.
template <class Action>
class ReservedWordLexeme final : public WordLexeme, private WordLexemeAcceptor {
public:
    using Table = ConstArrayOf<ReservedWord<Action>>;

    ReservedWordLexeme(Bits const& letters, DataFilter& filter, Table words,
                       ReservedWordAcceptor<Action>& acceptor)
        : WordLexeme(letters, filter, static_cast<WordLexemeAcceptor&>(*this)),
          m_words(words),
          m_acceptor(acceptor) {}

private:
    void AcceptWord(ConstData word) override {
        auto const found = std::lower_bound(
            m_words.begin(), m_words.end(), word,
            [](ReservedWord<Action> const& entry, ConstData key) { return Compare(entry.Word(), key) < 0; });
        if (found != m_words.end() && Compare(found->Word(), word) == 0)
            m_acceptor.AcceptReservedWord(word, found->action);
        else
            m_acceptor.AcceptOrdinaryWord(word);
    }
    void AcceptWordOverflow() override { m_acceptor.AcceptWordOverflow(); }

    Table m_words;
    ReservedWordAcceptor<Action>& m_acceptor;
};
