#pragma once

#include "foundation/DataFilter.h"
#include "text/AsciiText.h"

namespace Ascii {

// The filters that fold ASCII case. They hold nothing back.
class CaseRaisingFilter : public DataFilter {
public:
    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override { RaiseCase(in, out); }
};

class CaseLoweringFilter : public DataFilter {
public:
    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override { LowerCase(in, out); }
};

} // namespace Ascii
