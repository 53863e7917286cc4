#include "foundation/DataReader.h"

#include "foundation/Exceptions.h"

DataReader& DataReader::operator>>(Data target) {
    Buffer buffer(target);
    while (!buffer.Full() && Unfinished()) {
        std::size_t const room = buffer.Room();
        *this >> buffer;
        if (buffer.Room() == room) break;
    }
    if (!buffer.Full()) throw NoMoreData();
    return *this;
}
