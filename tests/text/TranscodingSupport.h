#pragma once

#include "foundation/Exceptions.h"
#include "text/Transcoder.h"

#include <cstring>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

// What the tests of the transcoders share. Texts are plain vectors of units here, so that gtest prints and
// compares them; "refused" is the empty optional.

template <class E>
using Units = std::vector<typename E::Unit>;

template <class E>
using Outcome = std::optional<Units<E>>;

template <class E>
ConstArrayOf<typename E::Unit> Range(Units<E> const& units) {
    return ConstArrayOf<typename E::Unit>(units.data(), units.data() + units.size());
}

template <class E>
UStringRef<E> TextOf(Units<E> const& units) {
    return UStringRef<E>(E(), Range<E>(units));
}

inline Units<UTF8> InUTF8(std::string const& text) {
    return Units<UTF8>(text.begin(), text.end());
}

// Keeps the text that it receives and how it came.
template <class E>
class RecordingTarget : public UTextReceiver<E> {
public:
    using Unit = typename E::Unit;

    void Start(E) override { ++starts; }
    void Receive(ConstArrayOf<Unit> piece) override {
        pieces.push_back(piece.Size());
        text.insert(text.end(), piece.begin(), piece.end());
    }
    void ReceiveEnd() override { ++ends; }

    int starts = 0;
    int ends = 0;
    std::vector<std::size_t> pieces;
    Units<E> text;
};

template <class To, class From>
Outcome<To> Transcoded(Units<From> const& units) {
    try {
        AutoUString<To> const text = Transcode<To, From>(TextOf<From>(units));
        return Units<To>(text.begin(), text.end());
    } catch (InvalidTextEncoding const&) {
        return std::nullopt;
    }
}

// The text given in pieces that end before the positions named.
template <class To, class From>
Outcome<To> TranscodedInPieces(Units<From> const& units, std::vector<std::size_t> cuts) {
    cuts.push_back(units.size());
    RecordingTarget<To> target;
    GenericTranscoder<To, From> transcoder(target);
    try {
        transcoder.Start(From());
        std::size_t first = 0;
        for (std::size_t const last : cuts) {
            // Memory of its own for each piece, so that a look behind its end is seen by the sanitizers.
            Units<From> const piece(units.begin() + static_cast<std::ptrdiff_t>(first),
                                    units.begin() + static_cast<std::ptrdiff_t>(last));
            transcoder.Receive(Range<From>(piece));
            first = last;
        }
        transcoder.ReceiveEnd();
        return target.text;
    } catch (InvalidTextEncoding const&) {
        return std::nullopt;
    }
}
