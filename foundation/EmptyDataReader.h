#pragma once

#include "foundation/DataReader.h"

// Reader without a single byte: always finished.
class EmptyDataReader : public DataReader {
public:
    using DataReader::operator>>;

    void Reset() override {}
    bool Finished() const override { return true; }
    bool Unfinished() const override { return false; }
    DataReader& operator>>(Buffer&) override { return *this; }
};
