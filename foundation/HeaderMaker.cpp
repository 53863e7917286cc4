#include "foundation/HeaderMaker.h"

#include "text/Ascii.h"
#include "text/AsciiText.h"

#include <utility>

void HeaderMaker::Start(unsigned long) {
    m_step = &HeaderMaker::StartHeaderLine;
    m_value = &DataReceiver::Ignore();
}

void HeaderMaker::Receive(ConstData text) {
    ConstBuffer in(text);
    while (!in.empty()) (this->*m_step)(in);
}

void HeaderMaker::ReceiveLineBreak(Range<unsigned long>) {
    m_step = &HeaderMaker::StartHeaderLine;
}

void HeaderMaker::ReceiveEnd(unsigned long) {
    EndField();
}

void HeaderMaker::StartHeaderLine(ConstBuffer& in) {
    if (Ascii::LinearWhiteSpace().Has(*in.Next())) {
        m_folding = m_valueHasText;
        m_step = &HeaderMaker::EatWhiteSpace;
        return;
    }
    EndField();
    m_name = Buffer(Data(m_nameBytes, m_nameBytes + cRoomForName));
    m_step = &HeaderMaker::HandleFieldName;
}

void HeaderMaker::HandleFieldName(ConstBuffer& in) {
    std::size_t const colon = in.Rest().PositionOf(':');
    std::size_t const size = colon == cAllOnes ? in.Size() : colon;
    ConstBuffer name(ConstData(in.Next(), in.Next() + size));
    in.Skip(size);
    Ascii::LowerCase(name, m_name);
    if (!name.empty()) {
        m_value = &DataReceiver::Ignore();
        m_step = &HeaderMaker::PassText;
    } else if (colon != cAllOnes) {
        in.Skip(1);
        StartField();
    }
}

void HeaderMaker::EatWhiteSpace(ConstBuffer& in) {
    while (!in.empty() && Ascii::LinearWhiteSpace().Has(*in.Next())) in.Skip(1);
    if (in.empty()) return;
    m_step = &HeaderMaker::PassText;
    if (std::exchange(m_folding, false)) m_value->Receive(" "_data);
}

void HeaderMaker::PassText(ConstBuffer& in) {
    ConstData const text = in.Rest();
    in.Skip(text.Size());
    m_valueHasText = true;
    m_value->Receive(text);
}

void HeaderMaker::StartField() {
    ConstData name = m_name.Written();
    while (!name.empty() && Ascii::LinearWhiteSpace().Has(name.end()[-1]))
        name = ConstData(name.begin(), name.end() - 1);
    m_step = &HeaderMaker::EatWhiteSpace;
    if (name.empty()) return;
    DataReceiver& value = m_fields.ReceiveField(name);
    value.Start();
    m_value = &value;
}

void HeaderMaker::EndField() {
    m_valueHasText = false;
    m_folding = false;
    std::exchange(m_value, &DataReceiver::Ignore())->ReceiveEnd();
}
