#pragma once

// Signed 64-bit arithmetic that wraps around instead of overflowing. Times come from outside, and a sum that
// leaves the range must have a defined value.

constexpr long long WrappingSum(long long a, long long b) {
    return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}

constexpr long long WrappingDifference(long long a, long long b) {
    return static_cast<long long>(static_cast<unsigned long long>(a) - static_cast<unsigned long long>(b));
}

constexpr long long WrappingProduct(long long a, long long b) {
    return static_cast<long long>(static_cast<unsigned long long>(a) * static_cast<unsigned long long>(b));
}

constexpr long long WrappingNegative(long long a) {
    return WrappingDifference(0, a);
}
