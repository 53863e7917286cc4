#include "text/Encodings.h"

#include "foundation/Exceptions.h"

#include <cstring>

IANANamedTextEncoding::IANANamedTextEncoding(ConstData name) {
    if (name.Size() > capacity) throw ConstDataCapacityExceeded();
    if (!name.empty()) std::memcpy(m_name, name.begin(), name.Size());
    m_size = name.Size();
}
