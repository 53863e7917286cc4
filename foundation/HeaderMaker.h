#pragma once

#include "foundation/LineReceiver.h"
#include "foundation/MessageReceiver.h"
#include "text/Buffers.h"

// Reads header lines, "Name: value", and hands each field to MessageReceiver::ReceiveField; it calls nothing
// else of the receiver.
//
// - The name is what stands before the first colon, in lower case, without white space at its end. There is
//   room for 64 bytes before the colon, that white space included.
// - White space in front of the value is dropped.
// - A line that begins with a space or tab continues the field before it: the break and the white space are
//   folded into one space, or into nothing where the value has no text yet. A continuation of nothing but
//   white space adds nothing.
// - A line without a colon, with an empty name or with more than 64 bytes before the colon is dropped
//   together with its continuations.
class HeaderMaker : public LineReceiver {
public:
    static constexpr std::size_t cRoomForName = 64;

    // `fields` must outlive the maker.
    explicit HeaderMaker(MessageReceiver& fields) : m_fields(fields) {}
    HeaderMaker(HeaderMaker const&) = delete;
    HeaderMaker& operator=(HeaderMaker const&) = delete;

    void Start(unsigned long position) override;
    void Receive(ConstData text) override;
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override;
    // Ends the last field.
    void ReceiveEnd(unsigned long position) override;

private:
    // The steps: each consumes some of its input and chooses the next.
    using Step = void (HeaderMaker::*)(ConstBuffer& in);
    void StartHeaderLine(ConstBuffer& in);
    void HandleFieldName(ConstBuffer& in);
    void EatWhiteSpace(ConstBuffer& in);
    void PassText(ConstBuffer& in);

    void StartField();
    void EndField();

    MessageReceiver& m_fields;
    Step m_step = &HeaderMaker::StartHeaderLine;
    // Where the value of the field at hand goes; the dropping receiver between fields.
    DataReceiver* m_value = &DataReceiver::Ignore();
    bool m_valueHasText = false;
    bool m_folding = false;
    unsigned char m_nameBytes[cRoomForName];
    Buffer m_name;
};
