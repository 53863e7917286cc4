#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

// A sequence of symbols that stands for one symbol, and what is done when it has been read. `Language` names
// its symbols in an enumeration PartOfSpeech, of which cPartsOfSpeech is more than the greatest (32 at most)
// and cEndOfSentence is the result of a whole sentence.
template <class Language, class Semantics>
struct Production {
    using Symbol = typename Language::PartOfSpeech;
    using Action = void (Semantics::*)();

    static constexpr std::size_t cLongest = 4;

    constexpr Production() = default;
    constexpr Production(std::initializer_list<Symbol> symbols, Symbol stands, Action act = nullptr)
        : length(symbols.size()), result(stands), action(act) {
        std::size_t index = 0;
        for (Symbol const symbol : symbols) sequence[index++] = symbol;
    }

    std::array<Symbol, cLongest> sequence{};
    std::size_t length = 0;
    Symbol result{};
    Action action = nullptr;
};

// The productions of a language as a tree: a node for each beginning of a sequence, and from it a branch for
// each symbol that can follow. Grammars are made at compile time, so that parsing builds no table. No symbol
// may stand, directly or through others, for a sequence that begins with itself.
template <class Language, class Semantics>
class Grammar {
public:
    using Symbol = typename Language::PartOfSpeech;
    using Rule = Production<Language, Semantics>;
    // Index of a node. 0 is the root, where every sequence begins, and means "none" as a successor.
    using Node = std::uint8_t;

    static constexpr Node cRoot = 0;
    static constexpr Node cNone = 0;

    constexpr Grammar(std::initializer_list<Rule> rules) {
        for (Rule const& rule : rules) Add(rule);
        FindLeftCorners();
        m_nodes[cRoot].followers = SetOf(Language::cEndOfSentence);
    }

    // The node behind `symbol`, when it continues a sequence at `node`.
    constexpr Node Next(Node node, Symbol symbol) const { return m_nodes[node].next[symbol]; }
    // The node behind `symbol`, when it begins a sequence and what that sequence comes to can follow `node`.
    constexpr Node Begin(Node node, Symbol symbol) const {
        return (m_leftCornerOf[symbol] & m_nodes[node].followers) != 0 ? m_nodes[cRoot].next[symbol] : cNone;
    }
    // Whether a longer sequence goes on from here.
    constexpr bool CanContinue(Node node) const { return m_nodes[node].followers != 0; }
    // The production that is complete here; null when none is.
    constexpr Rule const* Complete(Node node) const {
        Entry const& entry = m_nodes[node];
        return entry.isComplete ? &entry.rule : nullptr;
    }

private:
    static constexpr std::size_t cMostNodes = 48;
    static constexpr std::size_t cSymbols = Language::cPartsOfSpeech;

    using Set = std::uint32_t; // one bit for each symbol

    struct Entry {
        std::array<Node, cSymbols> next{};
        Set followers = 0;
        bool isComplete = false;
        Rule rule;
    };

    static constexpr Set SetOf(Symbol symbol) { return Set{1} << symbol; }

    constexpr void Add(Rule const& rule) {
        Node node = cRoot;
        for (std::size_t index = 0; index < rule.length; ++index) node = Branch(node, rule.sequence[index]);
        m_nodes[node].isComplete = true;
        m_nodes[node].rule = rule;
        m_leftCornerOf[rule.sequence[0]] |= SetOf(rule.result);
    }
    constexpr Node Branch(Node node, Symbol symbol) {
        Node& next = m_nodes[node].next[symbol];
        if (next == cNone) {
            next = m_used++;
            m_nodes[node].followers |= SetOf(symbol);
        }
        return next;
    }
    // Makes the relation transitive: what begins a beginning of x begins x.
    constexpr void FindLeftCorners() {
        for (std::size_t middle = 0; middle < cSymbols; ++middle)
            for (Set& corner : m_leftCornerOf)
                if ((corner >> middle & 1) != 0) corner |= m_leftCornerOf[middle];
    }

    std::array<Entry, cMostNodes> m_nodes{};
    std::array<Set, cSymbols> m_leftCornerOf{}; // for each symbol, the symbols whose sequences begin with it
    Node m_used = 1;
};
