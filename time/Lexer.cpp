#include "time/Lexer.h"

#include <utility>

void Lexer::Start() {
    m_current = nullptr;
}

void Lexer::Receive(ConstData data) {
    ConstBuffer in(data);
    while (!in.empty()) {
        if (!m_current) {
            m_current = &ChooseLexeme(*in.Next());
            m_current->Start();
        }
        if (m_current->Lex(in)) EndLexeme();
    }
}

void Lexer::ReceiveEnd() {
    if (m_current) EndLexeme();
    m_endAcceptor.AcceptEnd();
}

void Lexer::EndLexeme() {
    std::exchange(m_current, nullptr)->End();
}
