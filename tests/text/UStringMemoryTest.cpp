#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <new>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

// The sanitizers replace the allocator by one that needs the address space and ends the process when it
// cannot serve.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool cMemoryMayRunOut = false;
#else
constexpr bool cMemoryMayRunOut = true;
#endif

namespace {

constexpr std::size_t cViewSize = 64 * 1024 * 1024;

// A long text that takes no memory, for want of which no copy can then be made.
UStringRef<UTF8> ViewThatCannotBeCopied() {
    void* const mapping = mmap(nullptr, cViewSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) std::_Exit(5);
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlim_t const bytes = pages * static_cast<std::size_t>(getpagesize()) + cViewSize / 2;
    rlimit const limit{bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
    auto const* const first = static_cast<unsigned char const*>(mapping);
    return UStringRef<UTF8>(UTF8(), first, first + cViewSize);
}

template <class Operation>
bool RunsOutOfMemory(Operation operation) {
    try {
        operation();
    } catch (std::bad_alloc const&) {
        return true;
    }
    return false;
}

// 3 when every change ran out of memory and left the text as it was.
template <class S>
int ChangesThatFail(UStringRef<UTF8> const& kept) {
    S text(kept);
    UStringRef<UTF8> const view = ViewThatCannotBeCopied();
    bool const failed = RunsOutOfMemory([&] { text += view; }) && RunsOutOfMemory([&] { text = S(view); });
    return failed && text == kept ? 3 : 4;
}

int ReplacementThatFails(UStringRef<UTF8> const& kept) {
    AutoUString<UTF8> text(kept);
    UStringRef<UTF8> const view = ViewThatCannotBeCopied();
    bool const failed = RunsOutOfMemory([&] { text.replace(1, 2, view); }) &&
                        RunsOutOfMemory([&] { text.append(view, 1, cAllOnes); });
    return failed && text == kept ? 3 : 4;
}

// Assignment of a view.
template <class S>
int AssignmentThatFails(UStringRef<UTF8> const& kept) {
    S text(kept);
    S const other(text);
    UStringRef<UTF8> const view = ViewThatCannotBeCopied();
    bool const failed = RunsOutOfMemory([&] { text = view; });
    return failed && text == kept && other == kept ? 3 : 4;
}

class UStringWithoutMemory : public ::testing::TestWithParam<std::size_t> {
protected:
    void SetUp() override {
        if (!cMemoryMayRunOut) GTEST_SKIP() << "a sanitizer holds the memory";
        ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    }

    std::string const m_content = std::string(GetParam(), 'k');
    UStringRef<UTF8> const m_kept = MakeUTF8Ref(m_content);
};

auto const cSuccess = ::testing::ExitedWithCode(3);

} // namespace

TEST_P(UStringWithoutMemory, AutoUStringKeepsItsText) {
    EXPECT_EXIT(std::_Exit(ChangesThatFail<AutoUString<UTF8>>(m_kept)), cSuccess, "");
    EXPECT_EXIT(std::_Exit(ReplacementThatFails(m_kept)), cSuccess, "");
}

TEST_P(UStringWithoutMemory, CopiedUStringKeepsItsText) {
    EXPECT_EXIT(std::_Exit(ChangesThatFail<CopiedUString<UTF8>>(m_kept)), cSuccess, "");
    EXPECT_EXIT(std::_Exit(AssignmentThatFails<CopiedUString<UTF8>>(m_kept)), cSuccess, "");
}

TEST_P(UStringWithoutMemory, SharedUStringKeepsItsText) {
    EXPECT_EXIT(std::_Exit(ChangesThatFail<SharedUString<UTF8>>(m_kept)), cSuccess, "");
    EXPECT_EXIT(std::_Exit(AssignmentThatFails<SharedUString<UTF8>>(m_kept)), cSuccess, "");
}

INSTANTIATE_TEST_SUITE_P(InlineAndHeap, UStringWithoutMemory, ::testing::Values(10, 100));

TEST(AutoUString, OfMoreUnitsThanThereCanBeRaisesBadAlloc) {
    if (!cMemoryMayRunOut) GTEST_SKIP() << "a sanitizer holds the memory";
    EXPECT_THROW(AutoUString<UTF8>(UTF8(), std::size_t{0}, cAllOnes), std::bad_alloc);
    EXPECT_THROW(AutoUString<UTF8>(UTF8(), cAllOnes, std::size_t{0}), std::bad_alloc);
}
