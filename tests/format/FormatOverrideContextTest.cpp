#include "format/FormatOverrideContext.h"

#include "format/FormatOverrideScope.h"
#include "format/MakeUString.h"
#include "format/PlatformString.h"
#include "format/UFormat.h"
#include "foundation/Exceptions.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

UStringRef<UTF8> const cNoLanguage;

FormatOverrideSet Set(char const* text) {
    return FormatOverrideSet(MakeUTF8Ref(text), cNoLanguage);
}

std::string Local(AutoNullTerminated<Local8Bit> const& text) {
    return std::string(text.begin(), text.end());
}

} // namespace

TEST(FormatOverrideContext, GivesTheDefaultUnchangedWhileItIsEmpty) {
    FormatOverrideContext const context;
    UStringRef<UTF8> const text = "text"_utf8;
    EXPECT_FALSE(context.HasOverride("key"_utf8));
    EXPECT_EQ(context.Override("key"_utf8, text), "text"_utf8);
    EXPECT_EQ(context.Override("key"_utf8, text).begin(), text.begin());
    EXPECT_EQ(context.Override("key"_utf8), "key"_utf8);
    EXPECT_TRUE(context.Override("key"_utf8, UStringRef<UTF8>()).empty());
}

TEST(FormatOverrideContext, GivesTheTextOfASetInForce) {
    FormatOverrideContext context;
    FormatOverrideSet const set = Set("Take\tNehmen\nGone\t\n");
    FormatOverrideScope const scope(set, context);
    EXPECT_TRUE(context.HasOverride("Take"_utf8));
    EXPECT_EQ(context.Override("Take"_utf8, "other"_utf8), "Nehmen"_utf8);
    EXPECT_EQ(context.Override("Take"_utf8), "Nehmen"_utf8);
    EXPECT_FALSE(context.HasOverride("Snooze"_utf8));
    EXPECT_EQ(context.Override("Snooze"_utf8, "other"_utf8), "other"_utf8);
    EXPECT_EQ(context.Override("Snooze"_utf8), "Snooze"_utf8);
}

TEST(FormatOverrideContext, AnEmptyTextOverridesToo) {
    FormatOverrideContext context;
    FormatOverrideSet const set = Set("Gone\t\n");
    FormatOverrideScope const scope(set, context);
    EXPECT_TRUE(context.HasOverride("Gone"_utf8));
    EXPECT_EQ(context.Override("Gone"_utf8, "there"_utf8), ""_utf8);
}

TEST(FormatOverrideContext, AsksTheSetThatCameLastFirst) {
    FormatOverrideContext context;
    FormatOverrideSet const first = Set("a\t1\nb\t1\n");
    FormatOverrideSet const second = Set("b\t2\nc\t2\n");
    FormatOverrideSet const third = Set("c\t3\n");
    FormatOverrideScope const firstScope(first, context);
    FormatOverrideScope const secondScope(second, context);
    FormatOverrideScope const thirdScope(third, context);
    EXPECT_EQ(context.Override("a"_utf8), "1"_utf8);
    EXPECT_EQ(context.Override("b"_utf8), "2"_utf8);
    EXPECT_EQ(context.Override("c"_utf8), "3"_utf8);
    EXPECT_EQ(context.Override("d"_utf8), "d"_utf8);
    EXPECT_TRUE(context.HasOverride("a"_utf8));
    EXPECT_TRUE(context.HasOverride("c"_utf8));
    EXPECT_FALSE(context.HasOverride("d"_utf8));
}

// Within one set the smaller text counts; among sets it is the order alone.
TEST(FormatOverrideContext, TheSetThatCameLastCountsEvenWithTheGreaterText) {
    FormatOverrideContext context;
    FormatOverrideSet const small = Set("k\ta\n");
    FormatOverrideSet const great = Set("k\tz\n");
    FormatOverrideScope const smallScope(small, context);
    FormatOverrideScope const greatScope(great, context);
    EXPECT_EQ(context.Override("k"_utf8), "z"_utf8);
}

TEST(FormatOverrideScope, TakesItsSetAwayAtOnceWhenItGoes) {
    FormatOverrideContext context;
    FormatOverrideSet const first = Set("k\t1\n");
    FormatOverrideSet const second = Set("k\t2\nonly\t2\n");
    FormatOverrideScope const firstScope(first, context);
    {
        FormatOverrideScope const secondScope(second, context);
        EXPECT_EQ(context.Override("k"_utf8), "2"_utf8);
        EXPECT_TRUE(context.HasOverride("only"_utf8));
    }
    EXPECT_EQ(context.Override("k"_utf8), "1"_utf8);
    EXPECT_FALSE(context.HasOverride("only"_utf8));
}

TEST(FormatOverrideScope, MayGoInAnyOrder) {
    FormatOverrideContext context;
    FormatOverrideSet const sets[] = {Set("k\t0\n"), Set("k\t1\n"), Set("k\t2\n")};
    std::unique_ptr<FormatOverrideScope> scopes[3];
    for (int index = 0; index < 3; ++index)
        scopes[index] = std::make_unique<FormatOverrideScope>(sets[index], context);
    scopes[1].reset();
    EXPECT_EQ(context.Override("k"_utf8), "2"_utf8);
    scopes[2].reset();
    EXPECT_EQ(context.Override("k"_utf8), "0"_utf8);
    scopes[0].reset();
    EXPECT_EQ(context.Override("k"_utf8), "k"_utf8);
}

TEST(FormatOverrideScope, MayPutOneSetIntoSeveralContexts) {
    FormatOverrideContext one;
    FormatOverrideContext other;
    FormatOverrideSet const set = Set("k\tv\n");
    FormatOverrideScope const inOne(set, one);
    {
        FormatOverrideScope const inOther(set, other);
        EXPECT_EQ(other.Override("k"_utf8), "v"_utf8);
    }
    EXPECT_EQ(other.Override("k"_utf8), "k"_utf8);
    EXPECT_EQ(one.Override("k"_utf8), "v"_utf8);
}

TEST(FormatOverrideScope, RefusesASetThatDoesNotOutliveItAndIsNotCopied) {
    EXPECT_TRUE((std::is_constructible_v<FormatOverrideScope, FormatOverrideSet&, FormatOverrideContext&>));
    EXPECT_FALSE((std::is_constructible_v<FormatOverrideScope, FormatOverrideSet, FormatOverrideContext&>));
    EXPECT_FALSE(std::is_copy_constructible_v<FormatOverrideScope>);
    EXPECT_TRUE(std::has_virtual_destructor_v<FormatOverrideScope>);
    EXPECT_TRUE(std::has_virtual_destructor_v<FormatOverrideContext>);
}

TEST(FormatOverrideContext, TakesLinksWithoutAScopeToo) {
    FormatOverrideContext context;
    FormatOverrideSet const first = Set("k\t1\n");
    FormatOverrideSet const second = Set("k\t2\n");
    ListLink<FormatOverrideSet const> firstLink(first);
    ListLink<FormatOverrideSet const> secondLink(second);
    context.AddLanguage(firstLink);
    context.AddLanguage(secondLink);
    EXPECT_EQ(context.Override("k"_utf8), "2"_utf8);
    context.RemoveLanguage(secondLink);
    EXPECT_EQ(context.Override("k"_utf8), "1"_utf8);
    context.RemoveLanguage(firstLink);
    EXPECT_EQ(context.Override("k"_utf8), "k"_utf8);
}

TEST(FormatOverrideContext, IsNotCustomAndMakesEmptyOnesOfItsKind) {
    FormatOverrideContext context;
    FormatOverrideSet const set = Set("k\tv\n");
    FormatOverrideScope const scope(set, context);
    EXPECT_FALSE(context.isCustom());
    std::unique_ptr<FormatOverrideContext> const another = context.CreateNewInstance();
    ASSERT_TRUE(another);
    EXPECT_FALSE(another->HasOverride("k"_utf8));
    EXPECT_FALSE(another->isCustom());
}

// Lookups change nothing, so that threads may make them at the same time: the thread sanitizer watches.
TEST(FormatOverrideContext, AnswersSeveralThreadsAtOnce) {
    FormatOverrideContext context;
    FormatOverrideSet const first = Set("a\t1\n");
    FormatOverrideSet const second = Set("b\t2\n");
    FormatOverrideScope const firstScope(first, context);
    FormatOverrideScope const secondScope(second, context);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            for (int turn = 0; turn < 1000; ++turn) {
                EXPECT_EQ(context.Override("a"_utf8), "1"_utf8);
                EXPECT_EQ(UFormat("a"_utf8, "b"_utf8, context).overrideFormat, "1"_utf8);
                EXPECT_FALSE(context.HasOverride("c"_utf8));
            }
        });
    for (std::thread& thread : threads) thread.join();
}

namespace {

// Answers every key alike, and tells when it is destroyed.
class FixedContext : public FormatOverrideContext {
public:
    FixedContext(char const* text, bool& destroyed) : m_text(MakeUTF8Ref(text)), m_destroyed(destroyed) {}
    ~FixedContext() override { m_destroyed = true; }

    bool HasOverride(UStringRef<UTF8> const&) const override { return true; }
    UStringRef<UTF8> Override(UStringRef<UTF8> const&, UStringRef<UTF8> const&) const override {
        return m_text;
    }
    using FormatOverrideContext::Override;
    bool isCustom() override { return true; }

private:
    UStringRef<UTF8> m_text;
    bool& m_destroyed;
};

// Counts the sets that come and go, and takes none.
class CountingContext : public FormatOverrideContext {
public:
    void AddLanguage(ListLink<FormatOverrideSet const>& link) override {
        ++added;
        last = &link.Object();
    }
    void RemoveLanguage(ListLink<FormatOverrideSet const>& link) override {
        ++removed;
        last = &link.Object();
    }

    int added = 0;
    int removed = 0;
    FormatOverrideSet const* last = nullptr;
};

// Goes back to the context of the process, whatever a test has set.
class CustomContext : public testing::Test {
protected:
    ~CustomContext() override { SetCustomFormatOverrideContext(nullptr); }
};

} // namespace

TEST(FormatOverrideScope, TellsACustomContextOfItsSetToo) {
    CountingContext context;
    FormatOverrideSet const set = Set("k\tv\n");
    {
        FormatOverrideScope const scope(set, context);
        EXPECT_EQ(context.added, 1);
        EXPECT_EQ(context.removed, 0);
        EXPECT_EQ(context.last, &set);
        context.last = nullptr;
    }
    EXPECT_EQ(context.removed, 1);
    EXPECT_EQ(context.last, &set);
}

TEST(GlobalFormatOverrideContext, IsOneAndNotCustom) {
    EXPECT_EQ(&GlobalFormatOverrideContext(), &GlobalFormatOverrideContext());
    EXPECT_FALSE(GlobalFormatOverrideContext().isCustom());
    EXPECT_EQ(GetCustomFormatOverrideContext(), nullptr);
}

TEST_F(CustomContext, TakesThePlaceOfTheOneOfTheProcess) {
    FormatOverrideContext& ofTheProcess = GlobalFormatOverrideContext();
    bool destroyed = false;
    auto context = std::make_unique<FixedContext>("custom", destroyed);
    FormatOverrideContext* const address = context.get();
    SetCustomFormatOverrideContext(std::move(context));
    EXPECT_EQ(GetCustomFormatOverrideContext(), address);
    EXPECT_EQ(&GlobalFormatOverrideContext(), address);
    EXPECT_TRUE(GlobalFormatOverrideContext().isCustom());
    EXPECT_EQ(UFormat("key").overrideFormat, "custom"_utf8);
    EXPECT_FALSE(destroyed);
    SetCustomFormatOverrideContext(nullptr);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(GetCustomFormatOverrideContext(), nullptr);
    EXPECT_EQ(&GlobalFormatOverrideContext(), &ofTheProcess);
    EXPECT_EQ(UFormat("key").overrideFormat, "key"_utf8);
}

TEST_F(CustomContext, IsDestroyedWhenAnotherTakesItsPlace) {
    bool firstDestroyed = false;
    bool secondDestroyed = false;
    SetCustomFormatOverrideContext(std::make_unique<FixedContext>("first", firstDestroyed));
    SetCustomFormatOverrideContext(std::make_unique<FixedContext>("second", secondDestroyed));
    EXPECT_TRUE(firstDestroyed);
    EXPECT_FALSE(secondDestroyed);
    EXPECT_EQ(UFormat("key").overrideFormat, "second"_utf8);
}

TEST_F(CustomContext, LeavesTheSetsOfTheProcessInForce) {
    FormatOverrideSet const set = Set("key\tprocess\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    bool destroyed = false;
    SetCustomFormatOverrideContext(std::make_unique<FixedContext>("custom", destroyed));
    EXPECT_EQ(UFormat("key").overrideFormat, "custom"_utf8);
    SetCustomFormatOverrideContext(nullptr);
    EXPECT_EQ(UFormat("key").overrideFormat, "process"_utf8);
}

// Every way to a text goes through the context.

TEST(UFormat, IsTranslatedInTheContextOfTheProcess) {
    FormatOverrideSet const set = Set("{x} of {y}\t{y}: {x}\nTake\tNehmen\n");
    FormatPlusArguments<0> const before = UFormat("Take");
    {
        FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
        EXPECT_EQ(UFormat("Take").format, "Take"_utf8);
        EXPECT_EQ(UFormat("Take").overrideFormat, "Nehmen"_utf8);
        EXPECT_EQ(UFormat("Take"_utf8, "default"_utf8).overrideFormat, "Nehmen"_utf8);
        EXPECT_EQ(UFormat("Other"_utf8, "default"_utf8).overrideFormat, "default"_utf8);
        EXPECT_EQ(MakeUString(UFormat("Take")), "Nehmen"_utf8);
        EXPECT_EQ(MakeUString(UFormat("{x} of {y}") % "1"_utf8 % "2"_utf8), "2: 1"_utf8);
        EXPECT_EQ(Local(MakePlatformString(UFormat("Take"))), "Nehmen");
        EXPECT_EQ(Local(MakePlatformString(UFormat("{x} of {y}") % "1"_utf8 % "2"_utf8)), "2: 1");
        EXPECT_EQ(before.overrideFormat, "Take"_utf8);
    }
    EXPECT_EQ(UFormat("Take").overrideFormat, "Take"_utf8);
}

TEST(UFormat, IsTranslatedInTheContextThatItIsGiven) {
    FormatOverrideContext context;
    FormatOverrideSet const set = Set("k {a}\t{a} v\n");
    FormatOverrideScope const scope(set, context);
    FormatPlusArguments<0> const format = UFormat("k {a}"_utf8, "d {a}"_utf8, context);
    EXPECT_EQ(format.format, "k {a}"_utf8);
    EXPECT_EQ(format.overrideFormat, "{a} v"_utf8);
    EXPECT_EQ(MakeUString(format % "1"_utf8), "1 v"_utf8);
    EXPECT_EQ(UFormat("other"_utf8, "d"_utf8, context).overrideFormat, "d"_utf8);
    EXPECT_EQ(UFormat("k {a}").overrideFormat, "k {a}"_utf8);
}

TEST(UFormat, KeepsAnEmptyTranslation) {
    FormatOverrideSet const set = Set("Take\t\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_EQ(MakeUString(UFormat("Take")), ""_utf8);
}

TEST(UFormat, TheTranslationIsChosenWhenTheFormatIsMade) {
    std::optional<FormatPlusArguments<0>> format;
    FormatOverrideSet const set = Set("Take\tNehmen\n");
    {
        FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
        format = UFormat("Take");
    }
    EXPECT_EQ(MakeUString(*format), "Nehmen"_utf8);
}

TEST(UFormat, ATranslationMayUseTheVariablesInAnyOrderAgainAndNotAtAll) {
    FormatOverrideSet const set = Set("{a} {b}\t{b}{b}{_tab}{_obrace}\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_EQ(MakeUString(UFormat("{a} {b}") % "1"_utf8 % "2"_utf8), "22\t{"_utf8);
}

TEST(UFormat, AFormatWithATabIsFoundByItsVariable) {
    FormatOverrideSet const set = Set("a{_tab}b\tc{_tab}d\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_EQ(MakeUString(UFormat("a{_tab}b")), "c\td"_utf8);
}

TEST(UFormat, ABadTranslationFailsWhenItIsRenderedAndNoSooner) {
    FormatOverrideSet const set = Set("{x} a\t{x\n{x} b\t{z}\n{x} c\t{}\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_THROW(MakeUString(UFormat("{x} a") % "1"_utf8), BadFormatStringError);
    EXPECT_THROW(MakeUString(UFormat("{x} b") % "1"_utf8), UndefinedFormatVariable);
    EXPECT_THROW(MakeUString(UFormat("{x} c") % "1"_utf8), ImproperFormatVariableName);
    EXPECT_THROW(MakePlatformString(UFormat("{x} a") % "1"_utf8), BadFormatStringError);
}

TEST(UFormat, ATranslationCanNotHaveATextOfTheArguments) {
    FormatOverrideSet const set = Set("{x}\t[{x}]\n{secret}\tno\n");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_EQ(MakeUString(UFormat("{x}") % "{secret}"_utf8), "[{secret}]"_utf8);
}

// The test's locale is "C", which cannot spell the argument.
TEST(MakePlatformString, TranslatesTheMarkerOfATextThatCannotBeShown) {
    FormatOverrideSet const set = Set("<Invalid String>\t<Nicht darstellbar>\n");
    EXPECT_EQ(Local(MakePlatformString(UFormat("{x}") % "\xc3\xa4"_utf8)), "<Invalid String>");
    FormatOverrideScope const scope(set, GlobalFormatOverrideContext());
    EXPECT_EQ(Local(MakePlatformString(UFormat("{x}") % "\xc3\xa4"_utf8)), "<Nicht darstellbar>");
}

TEST(UFormat, RefusesTextsThatDoNotOutliveItInAnyContext) {
    auto const canFormat = []<class Key, class Text>() {
        return requires(Key && key, Text && text, FormatOverrideContext const& context) {
            UFormat(std::forward<Key>(key), std::forward<Text>(text), context);
        };
    };
    EXPECT_TRUE((canFormat.operator()<UStringRef<UTF8>, AutoUString<UTF8>&>()));
    EXPECT_FALSE((canFormat.operator()<UStringRef<UTF8>, AutoUString<UTF8>>()));
    EXPECT_FALSE((canFormat.operator()<CopiedUString<UTF8>, UStringRef<UTF8>>()));
}
