#include "time/WordLexeme.h"

#include "time/ByteRun.h"

void WordLexeme::Start() {
    m_word = Buffer(Data(m_room, m_room + cCapacity));
    m_overflow = false;
}

bool WordLexeme::Lex(ConstBuffer& in) {
    ConstBuffer run(TakeRun(in, m_letters));
    m_filter(run, m_word);
    // The rest of a long word is consumed and forgotten, so that it does not begin a word of its own.
    if (!run.empty()) m_overflow = true;
    return !in.empty();
}

void WordLexeme::End() {
    if (m_overflow)
        m_acceptor.AcceptWordOverflow();
    else
        m_acceptor.AcceptWord(m_word.Written());
}
