#pragma once

#include "text/Data.h"

class ConstDataRope;

// Reference to a chain of byte ranges that are to be read as one, passed by value; null for the empty chain.
// It owns nothing: every piece of the chain must outlive it.
class ConstDataRopeReference {
public:
    constexpr ConstDataRopeReference() = default;
    constexpr ConstDataRopeReference(ConstDataRope const& first) : m_first(&first) {}

    // True behind the last piece.
    constexpr bool empty() const { return !m_first; }
    // The first range. The chain must not be empty.
    ConstData Piece() const;
    // The chain without its first range. The chain must not be empty.
    ConstDataRopeReference Rest() const;

private:
    ConstDataRope const* m_first = nullptr;
};

// One piece of a chain: a range of bytes and a reference to what follows. Chains are made from the back:
//
//     ConstDataRope const tail("world"_data);
//     ConstDataRope const text("hello "_data, tail);
class ConstDataRope {
public:
    constexpr explicit ConstDataRope(ConstData piece, ConstDataRopeReference rest = {})
        : m_piece(piece), m_rest(rest) {}

    constexpr ConstData Piece() const { return m_piece; }
    constexpr ConstDataRopeReference Rest() const { return m_rest; }

private:
    ConstData m_piece;
    ConstDataRopeReference m_rest;
};

inline ConstData ConstDataRopeReference::Piece() const {
    return m_first->Piece();
}

inline ConstDataRopeReference ConstDataRopeReference::Rest() const {
    return m_first->Rest();
}
