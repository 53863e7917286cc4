#pragma once

#include "foundation/DataReader.h"
#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"
#include "text/Data.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// Bytes that look random and are the same in every run.
inline std::string MakeNoise(std::size_t size) {
    std::string noise;
    std::uint32_t state = 12345;
    for (std::size_t index = 0; index < size; ++index) {
        state = state * 1664525u + 1013904223u;
        noise += static_cast<char>(state >> 24);
    }
    return noise;
}

// Hands `stream` to `receive` in pieces of `size` bytes.
inline void FeedInPieces(ConstData stream, std::size_t size, std::function<void(ConstData)> const& receive) {
    while (!stream.empty()) {
        std::size_t const piece = std::min(size, stream.Size());
        receive(ConstData(stream.begin(), stream.begin() + piece));
        stream = ConstData(stream.begin() + piece, stream.end());
    }
}

// Runs `check` once for each way to cut `stream`: in one piece, byte by byte, and in two at every position.
// `check` gets a function that feeds the pieces to what it is given.
using Feed = std::function<void(std::function<void(ConstData)> const&)>;
inline void ForEveryCut(ConstData stream, std::function<void(Feed const&)> const& check) {
    check([=](auto const& receive) { receive(stream); });
    check([=](auto const& receive) { FeedInPieces(stream, 1, receive); });
    for (std::size_t cut = 0; cut <= stream.Size(); ++cut) {
        check([=](auto const& receive) {
            receive(ConstData(stream.begin(), stream.begin() + cut));
            receive(ConstData(stream.begin() + cut, stream.end()));
        });
    }
}

// Writes down what it is called with: "<" for Start, the bytes, ">" for ReceiveEnd.
class RecordingDataReceiver : public DataReceiver {
public:
    using DataReceiver::Receive;
    void Start() override { record += '<'; }
    void Receive(ConstData data) override {
        record += MakeString(data);
        chunks.push_back(data.Size());
    }
    void ReceiveEnd() override { record += '>'; }

    std::string record;
    std::vector<std::size_t> chunks;
};

// Writes down what it is called with: "<0" for a start at 0, the text, "[5,7]" for a break, "7>" for the end.
// Text that comes in several pieces is written down as one.
class RecordingLineReceiver : public LineReceiver {
public:
    void Start(unsigned long position) override { record += '<' + std::to_string(position) + ' '; }
    void Receive(ConstData text) override {
        record += MakeString(text);
        ++pieces;
    }
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override {
        record += '[' + std::to_string(lineBreak.begin) + ',' + std::to_string(lineBreak.end) + ']';
    }
    void ReceiveEnd(unsigned long position) override { record += ' ' + std::to_string(position) + '>'; }

    std::string record;
    int pieces = 0;
};

// Reads a string, at most `most` bytes a time.
class StringReader : public DataReader {
public:
    using DataReader::operator>>;

    explicit StringReader(std::string text, std::size_t most = 5) : m_text(std::move(text)), m_most(most) {}

    void Reset() override { m_position = 0; }
    bool Unfinished() const override { return m_position < m_text.size(); }
    DataReader& operator>>(Buffer& target) override {
        std::size_t const count = std::min({target.Room(), m_most, m_text.size() - m_position});
        target << MakeConstData(m_text.substr(m_position, count));
        m_position += count;
        return *this;
    }

private:
    std::string m_text;
    std::size_t m_most;
    std::size_t m_position = 0;
};
