#pragma once

#include "time/ByteRun.h"
#include "time/Lexeme.h"

// A run of white space, which is dropped.
class IgnoredTextLexeme final : public Lexeme {
public:
    void Start() override {}
    bool Lex(ConstBuffer& in) override {
        TakeRun(in, Ascii::WhiteSpace());
        return !in.empty();
    }
    void End() override {}
};
