#pragma once

#include "foundation/HeaderMaker.h"

// Groups lines into one message: the lines up to the first empty one are its header and go through
// HeaderMaker, the lines behind it are its body and go on as they are. An empty first line means that there
// are no fields. A line of white space only is not empty: it continues a field.
class MessageMaker : public LineReceiver {
public:
    // `message` must outlive the maker.
    explicit MessageMaker(MessageReceiver& message) : m_message(message), m_header(message) {}

    void Start(unsigned long position) override;
    void Receive(ConstData text) override;
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override;
    void ReceiveEnd(unsigned long position) override;

private:
    void EndHeader(unsigned long position);

    MessageReceiver& m_message;
    HeaderMaker m_header;
    bool m_inBody = false;
    bool m_lineHasText = false;
};
