#include "foundation/DataFilter.h"

namespace {

class CopyFilter : public DataFilter {
public:
    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override { out << in; }
};

// Made by the compiler and never destroyed, so that it serves the constructors and destructors of other
// process-wide objects as well.
union CopyFilterHolder {
    constexpr CopyFilterHolder() : filter() {}
    ~CopyFilterHolder() {}

    CopyFilter filter;
};

constinit CopyFilterHolder copyFilter;

} // namespace

constinit DataFilter& DataFilter::copy = copyFilter.filter;

ConstData DataFilter::operator()(ConstData in, Buffer& out) {
    ConstBuffer source(in);
    (*this)(source, out);
    return source.Rest();
}

ConstData DataFilter::operator()(ConstBuffer& in, Data out) {
    Buffer target(out);
    (*this)(in, target);
    return target.Written();
}

ConstData DataFilter::operator()(ConstData in, Data out) {
    ConstBuffer source(in);
    return (*this)(source, out);
}
