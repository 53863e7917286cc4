#include "text/AsciiText.h"

#include <algorithm>

namespace Ascii {

namespace {

using Fold = void (*)(ConstData source, Data target);

AutoUString<UTF8> MakeFolded(Fold fold, ConstData source) {
    AutoUString<UTF8> text(UTF8(), source.Size(), source.Size());
    fold(source, Data(text.begin(), text.end()));
    return text;
}

void FoldWhatFits(Fold fold, ConstBuffer& source, Buffer& target) {
    std::size_t const count = std::min(source.Size(), target.Room());
    fold(source.Rest(), Data(target.Next(), target.Next() + count));
    source.Skip(count);
    target.Advance(count);
}

} // namespace

AutoUString<UTF8> LowerCase(ConstData source) {
    return MakeFolded(LowerCase, source);
}

AutoUString<UTF8> RaiseCase(ConstData source) {
    return MakeFolded(RaiseCase, source);
}

void LowerCase(ConstBuffer& source, Buffer& target) {
    FoldWhatFits(LowerCase, source, target);
}

void RaiseCase(ConstBuffer& source, Buffer& target) {
    FoldWhatFits(RaiseCase, source, target);
}

} // namespace Ascii
