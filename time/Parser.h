#pragma once

#include "foundation/Exceptions.h"
#include "foundation/FiniteStack.h"
#include "time/Grammar.h"

// Reads a sentence of a grammar, symbol by symbol, from the bottom up, and runs the productions' actions on a
// semantic object. It keeps one position of the grammar for each symbol that has not been reduced yet.
//
// A symbol is taken in two steps, so that a value which comes with it can be pushed between them: Append
// first runs the actions of what the symbol ends, and Shift runs those of what it completes. All errors are
// ParsingFailure; after one the parser has to be Reset.
//
// A symbol is taken only where the grammar lets it stand, so the stack never holds more than the longest
// nesting of the grammar, whatever the text is.
template <class Language, class Semantics>
class Parser {
public:
    using LanguageGrammar = Grammar<Language, Semantics>;
    using Symbol = typename LanguageGrammar::Symbol;

    // Both must outlive the parser.
    Parser(LanguageGrammar const& grammar, Semantics& semantics)
        : m_grammar(grammar), m_semantics(semantics) {}

    void Reset() {
        m_positions.Clear();
        m_complete = false;
    }

    // Enters the symbol, reducing what must be complete before it.
    void Append(Symbol symbol) {
        Node next = Towards(symbol);
        while (next == LanguageGrammar::cNone) {
            Reduce();
            next = Towards(symbol);
        }
        m_positions.Push(next);
    }

    // Reduces what nothing can continue.
    void Shift() {
        while (!m_positions.empty() && !m_grammar.CanContinue(m_positions.Top())) Reduce();
    }

    // Reduces whatever is complete. Returns when that is a sentence.
    void End() {
        while (!m_complete) Reduce();
    }

private:
    using Node = typename LanguageGrammar::Node;

    // As many symbols as a nesting of the longest productions could hold; no grammar here comes near.
    static constexpr std::size_t cMostPositions = 16;

    Node Position() const { return m_positions.empty() ? LanguageGrammar::cRoot : m_positions.Top(); }

    // The next position: onwards from the current one, or else at the beginning of an inner sequence; cNone
    // when only a reduction can lead on. Nothing may follow a sentence.
    Node Towards(Symbol symbol) const {
        if (m_complete) throw ParsingFailure();
        Node const position = Position();
        Node const onwards = m_positions.empty() ? LanguageGrammar::cNone : m_grammar.Next(position, symbol);
        return onwards != LanguageGrammar::cNone ? onwards : m_grammar.Begin(position, symbol);
    }

    // Replaces the complete sequence on top by what it stands for.
    void Reduce() {
        auto const* const rule = m_grammar.Complete(Position());
        if (!rule) throw ParsingFailure();
        m_positions.Drop(rule->length);
        if (rule->action) (m_semantics.*rule->action)();
        if (rule->result == Language::cEndOfSentence)
            CompleteSentence();
        else
            Append(rule->result);
    }

    void CompleteSentence() {
        if (!m_positions.empty()) throw ParsingFailure();
        m_complete = true;
    }

    LanguageGrammar const& m_grammar;
    Semantics& m_semantics;
    FiniteStack<Node, cMostPositions> m_positions;
    bool m_complete = false;
};
