#include "dialogs/ActionRequest.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

std::string const cLongText(100, 'x');

TimeObject SomeTime() {
    return TimeObject(Instant::FromMicroseconds(1293955509000000), TimeZone::FromSeconds(3600));
}

ActionRequest FullRequest() {
    return ActionRequest(7, SomeTime(), "Title"_utf8, "Description"_utf8, true, false, true, false,
                         SharedUString<UTF8>("preview"_utf8), true, false, SharedUString<UTF8>("before"_utf8),
                         true, SharedUString<UTF8>("source"_utf8), SharedUString<UTF8>("meta"_utf8));
}

} // namespace

TEST(ActionRequest, DefaultHasNoTextsNoOptionalsAndNoFlags) {
    ActionRequest const request;
    EXPECT_EQ(request.id, 0u);
    EXPECT_TRUE(request.deadline.IsNull());
    EXPECT_TRUE(request.preview.IsNull());
    EXPECT_TRUE(request.preActionMessage.IsNull());
    EXPECT_TRUE(request.sourceActionTitle.IsNull());
    EXPECT_TRUE(request.metaData.IsNull());
    EXPECT_TRUE(request.title.empty());
    EXPECT_TRUE(request.description.empty());
    EXPECT_FALSE(request.cancellable || request.shutdown || request.restart || request.includedCommand ||
                 request.forceRun || request.requestSave || request.useCannedStrings);
}

TEST(ActionRequest, ConstructorPutsEachArgumentIntoItsField) {
    ActionRequest const request = FullRequest();
    EXPECT_EQ(request.id, 7u);
    EXPECT_EQ(*request.deadline, SomeTime());
    EXPECT_EQ(request.title, "Title"_utf8);
    EXPECT_EQ(request.description, "Description"_utf8);
    EXPECT_TRUE(request.cancellable);
    EXPECT_FALSE(request.shutdown);
    EXPECT_TRUE(request.restart);
    EXPECT_FALSE(request.includedCommand);
    EXPECT_EQ(*request.preview, "preview"_utf8);
    EXPECT_TRUE(request.forceRun);
    EXPECT_FALSE(request.requestSave);
    EXPECT_EQ(*request.preActionMessage, "before"_utf8);
    EXPECT_TRUE(request.useCannedStrings);
    EXPECT_EQ(*request.sourceActionTitle, "source"_utf8);
    EXPECT_EQ(*request.metaData, "meta"_utf8);
}

TEST(ActionRequest, ConstructorPutsEachFlagIntoItsField) {
    // In the order of the arguments.
    bool ActionRequest::*const fields[] = {&ActionRequest::cancellable,     &ActionRequest::shutdown,
                                           &ActionRequest::restart,         &ActionRequest::includedCommand,
                                           &ActionRequest::forceRun,        &ActionRequest::requestSave,
                                           &ActionRequest::useCannedStrings};
    for (std::size_t set = 0; set < std::size(fields); ++set) {
        NullOr<SharedUString<UTF8>> const none;
        ActionRequest const request(1, NullOr<TimeObject>(), "t"_utf8, "d"_utf8, set == 0, set == 1, set == 2,
                                    set == 3, none, set == 4, set == 5, none, set == 6, none, none);
        for (std::size_t field = 0; field < std::size(fields); ++field)
            EXPECT_EQ(request.*fields[field], field == set) << field << " with " << set << " set";
    }
}

TEST(ActionRequest, DeadlineIsThePointInTimeOfTheTimeObject) {
    EXPECT_TRUE(ActionRequest().Deadline().IsNull());
    EXPECT_EQ(*FullRequest().Deadline(), Instant::FromMicroseconds(1293955509000000));
}

TEST(ActionRequest, CopyHasOptionalsOfItsOwn) {
    ActionRequest const original = FullRequest();
    ActionRequest copy(original);
    copy.deadline = NullOr<TimeObject>();
    *copy.preview = "other"_utf8;
    EXPECT_EQ(*original.deadline, SomeTime());
    EXPECT_EQ(*original.preview, "preview"_utf8);
    ActionRequest assigned;
    assigned = original;
    *assigned.metaData = "other"_utf8;
    EXPECT_EQ(*original.metaData, "meta"_utf8);
}

TEST(ActionRequest, SettingATextOfACopyLeavesTheOriginalAlone) {
    for (auto const& text : {std::string("short"), cLongText}) {
        ActionRequest original;
        original.SetTitle(MakeUTF8Ref(text));
        original.SetDescription(MakeUTF8Ref(text));
        ActionRequest copy(original);
        copy.SetTitle("changed"_utf8);
        copy.SetDescription("changed too"_utf8);
        EXPECT_EQ(original.title, MakeUTF8Ref(text));
        EXPECT_EQ(original.description, MakeUTF8Ref(text));
        EXPECT_EQ(copy.title, "changed"_utf8);
        EXPECT_EQ(copy.description, "changed too"_utf8);
    }
}

TEST(ActionRequest, TextsMayBeSetFromAViewIntoThemselves) {
    std::string alphabet;
    for (char letter = 'a'; letter <= 'z'; ++letter) alphabet += letter;
    // One that is held inside the object, one that is on the heap.
    for (std::string const& text : {alphabet, alphabet + alphabet + alphabet + alphabet}) {
        ActionRequest request;
        request.SetTitle(MakeUTF8Ref(text));
        request.SetDescription(MakeUTF8Ref(text));
        ActionRequest const sharer(request);
        request.SetTitle(request.title.Ref().Middle(2, text.size()));
        request.SetDescription(request.description.Ref().Middle(1, text.size() - 1));
        EXPECT_EQ(request.title, MakeUTF8Ref(text.substr(2)));
        EXPECT_EQ(request.description, MakeUTF8Ref(text.substr(1, text.size() - 2)));
        request.SetTitle(request.title.Ref().Middle(1, 4));
        EXPECT_EQ(request.title, "def"_utf8);
        EXPECT_EQ(sharer.title, MakeUTF8Ref(text));
        EXPECT_EQ(sharer.description, MakeUTF8Ref(text));
    }
}

TEST(ActionRequest, MovesWithoutThrowing) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<ActionRequest>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<ActionRequest>);
}
