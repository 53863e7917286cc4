#include "foundation/Base64.h"

#include "foundation/ApplyFilter.h"
#include "foundation/Base64Decoder.h"
#include "foundation/Base64Encoder.h"

AutoUString<UTF8> Base64Encode(ConstData data) {
    Base64Encoder encoder;
    return ApplyFilter(MakeUTF8Ref(data), encoder);
}

std::vector<unsigned char> Base64Decode(ConstData text) {
    Base64Decoder decoder;
    return ApplyFilter(text, decoder);
}
