#include "link/ProtocolRecords.h"

#include "foundation/ExceptionPL.h"
#include "link/ActionRequestXML.h"
#include "link/InitializationInfo.h"
#include "tests/support/Reading.h"
#include "tests/support/UStringPrinting.h"
#include "text/UStringBuilder.h"

#include <gtest/gtest.h>

namespace {

RemoveRequest ReadRemoveRequest(std::string const& document) {
    RemoveRequest request;
    XMLLoad(*ParsedElement(document), request);
    return request;
}

AutoUString<UTF8> Written(RemoveRequest const& request) {
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    XMLWriter writer(builder, XMLWriter::Compact);
    XMLSave(writer, request);
    return builder.Take();
}

Instant const cSomeInstant = Instant::FromMicroseconds(1293955509000000);

} // namespace

TEST(ActionRequestXML, ReadsEveryFieldIntoItsPlace) {
    auto const request = ReadRecord<ActionRequest>(
        "<ActionRequest><PreActionMessage>pam</PreActionMessage>"
        "<Deadline>Sun, 02 Jan 2011 08:05:09 +0000</Deadline>"
        "<ShortDescription>short</ShortDescription><Preview>pre</Preview>"
        "<ID>18446744073709551615</ID><Title>title</Title><Cancellable>true</Cancellable>"
        "<Restart>true</Restart><Shutdown>true</Shutdown><IncludedCommand>true</IncludedCommand>"
        "<ForceRun>true</ForceRun><RequestSave>true</RequestSave><UseCannedStrings>true</UseCannedStrings>"
        "<SourceActionTitle>source</SourceActionTitle><MetaData>meta</MetaData></ActionRequest>");
    EXPECT_EQ(*request.preActionMessage, "pam"_utf8);
    EXPECT_EQ(*request.Deadline(), cSomeInstant);
    EXPECT_EQ(request.description, "short"_utf8);
    EXPECT_EQ(*request.preview, "pre"_utf8);
    EXPECT_EQ(request.id, 18446744073709551615ul);
    EXPECT_EQ(request.title, "title"_utf8);
    EXPECT_TRUE(request.cancellable && request.restart && request.shutdown && request.includedCommand &&
                request.forceRun && request.requestSave && request.useCannedStrings);
    EXPECT_EQ(*request.sourceActionTitle, "source"_utf8);
    EXPECT_EQ(*request.metaData, "meta"_utf8);
}

TEST(ActionRequestXML, EachFlagHasAnElementOfItsOwn) {
    bool ActionRequest::*const fields[] = {&ActionRequest::cancellable,     &ActionRequest::restart,
                                           &ActionRequest::shutdown,        &ActionRequest::includedCommand,
                                           &ActionRequest::forceRun,        &ActionRequest::requestSave,
                                           &ActionRequest::useCannedStrings};
    char const* const names[] = {"Cancellable", "Restart",     "Shutdown",        "IncludedCommand",
                                 "ForceRun",    "RequestSave", "UseCannedStrings"};
    for (std::size_t set = 0; set < std::size(names); ++set) {
        std::string const name(names[set]);
        auto const request = ReadRecord<ActionRequest>("<a><" + name + ">true</" + name + "></a>");
        for (std::size_t field = 0; field < std::size(fields); ++field)
            EXPECT_EQ(request.*fields[field], field == set) << name << " and " << names[field];
    }
}

TEST(ActionRequestXML, MissingFieldsKeepTheirDefaults) {
    auto const request = ReadRecord<ActionRequest>("<ActionRequest><Unknown>1</Unknown></ActionRequest>");
    EXPECT_EQ(request.id, 0u);
    EXPECT_TRUE(request.deadline.IsNull());
    EXPECT_TRUE(request.preview.IsNull());
    EXPECT_TRUE(request.title.empty());
    EXPECT_FALSE(request.useCannedStrings);
}

TEST(ActionRequestXML, TheLastOfSeveralSameNamedFieldsCounts) {
    auto const request =
        ReadRecord<ActionRequest>("<a><ID>1</ID><ID>2</ID><Preview>x</Preview><Preview>y</Preview></a>");
    EXPECT_EQ(request.id, 2u);
    EXPECT_EQ(*request.preview, "y"_utf8);
}

TEST(ActionRequestXML, AbsentDeadlineIsNullAndAnEmptyOneIsABadTime) {
    EXPECT_TRUE(ReadRecord<ActionRequest>("<a></a>").deadline.IsNull());
    EXPECT_THROW(ReadRecord<ActionRequest>("<a><Deadline></Deadline></a>"), ParsingFailure);
}

TEST(ActionRequestXML, ADeadlineThatMeansNoMomentThrows) {
    auto const read = [](std::string const& deadline) {
        ReadRecord<ActionRequest>("<a><Deadline>" + deadline + "</Deadline></a>");
    };
    EXPECT_THROW(read("31 Feb 2011 08:05 GMT"), NoSuchDate);
    EXPECT_THROW(read("02 Jan 2011 25:00 GMT"), NoSuchTimeOfDay);
    EXPECT_THROW(read("Mon, 02 Jan 2011 08:05 GMT"), WrongDayOfWeek);
    EXPECT_THROW(read("02 Jan 2011 08:05"), NoTimeZone);
    EXPECT_NO_THROW(read("02 Jan 2011 08:05 GMT"));
}

TEST(ActionRequestXML, PresentEmptyTextIsNotNull) {
    auto const request = ReadRecord<ActionRequest>("<a><PreActionMessage></PreActionMessage></a>");
    ASSERT_FALSE(request.preActionMessage.IsNull());
    EXPECT_TRUE(request.preActionMessage->empty());
}

TEST(ActionRequestXML, BadNumeralThrows) {
    EXPECT_THROW(ReadRecord<ActionRequest>("<a><ID>x</ID></a>"), NotANumeral);
    EXPECT_THROW(ReadRecord<ActionRequest>("<a><ID></ID></a>"), NotANumeral);
    EXPECT_THROW(ReadRecord<ActionRequest>("<a><ID>\n1</ID></a>"), NotANumeral);
    EXPECT_THROW(ReadRecord<ActionRequest>("<a><ID>18446744073709551616</ID></a>"), NumeralTooLarge);
}

TEST(MessageRequest, ReadsEveryFieldIntoItsPlace) {
    auto const message = ReadRecord<MessageRequest>(
        "<m><IsCompletionMessage>true</IsCompletionMessage><Timeout>PT1M30S</Timeout><Title>t</Title>"
        "<Message>m</Message><ID>12</ID><ActionState>s</ActionState></m>");
    EXPECT_TRUE(message.isCompletionMessage);
    EXPECT_EQ(*message.timeout, TimeInterval::FromMicroseconds(90000000));
    EXPECT_EQ(message.title, "t"_utf8);
    EXPECT_EQ(message.message, "m"_utf8);
    EXPECT_EQ(message.id, 12u);
    EXPECT_EQ(message.actionState, "s"_utf8);
}

TEST(MessageRequest, DefaultsStayWithoutFields) {
    auto const message = ReadRecord<MessageRequest>("<m></m>");
    EXPECT_FALSE(message.isCompletionMessage);
    EXPECT_TRUE(message.timeout.IsNull());
    EXPECT_TRUE(message.title.empty() && message.message.empty() && message.actionState.empty());
    EXPECT_EQ(message.id, 0u);
}

TEST(MessageRequest, BadTimeoutThrows) {
    EXPECT_THROW(ReadRecord<MessageRequest>("<m><Timeout></Timeout></m>"), ExceptionPL);
    EXPECT_THROW(ReadRecord<MessageRequest>("<m><Timeout>90</Timeout></m>"), ExceptionPL);
    EXPECT_THROW(ReadRecord<MessageRequest>("<m><Timeout>P1Y</Timeout></m>"), ExceptionPL);
    EXPECT_THROW(ReadRecord<MessageRequest>("<m><Timeout>\nPT1S</Timeout></m>"), ExceptionPL);
    EXPECT_THROW(ReadRecord<MessageRequest>("<m><Timeout>PT1S\n</Timeout></m>"), ExceptionPL);
}

TEST(RemoveRequest, ReadsItsFourTypes) {
    char const* const names[] = {"Action", "Offer", "Message", "All"};
    for (unsigned int value = 0; value < 4; ++value) {
        auto const request = ReadRemoveRequest("<r><RemoveType>" + std::string(names[value]) +
                                               "</RemoveType><ID>7</ID><Deleted>true</Deleted></r>");
        EXPECT_EQ(request.type, static_cast<RemoveRequest::RemoveType>(value));
        EXPECT_EQ(request.id, 7u);
        EXPECT_TRUE(request.deleted);
    }
}

TEST(RemoveRequest, AnyOtherTypeTextLeavesTheDefault) {
    for (char const* const text : {"action", "ACTION", " Action", "Action ", "", "0", "Actions"})
        EXPECT_EQ(ReadRemoveRequest("<r><RemoveType>" + std::string(text) + "</RemoveType></r>").type,
                  RemoveRequest::All)
            << text;
    auto const request = ReadRemoveRequest("<r></r>");
    EXPECT_EQ(request.type, RemoveRequest::All);
    EXPECT_EQ(request.id, 0u);
    EXPECT_FALSE(request.deleted);
}

TEST(RemoveRequest, TheLastTypeTextDecidesEvenIfItIsNoName) {
    EXPECT_EQ(
        ReadRemoveRequest("<r><RemoveType>Action</RemoveType><RemoveType>Message</RemoveType></r>").type,
        RemoveRequest::Message);
    EXPECT_EQ(ReadRemoveRequest("<r><RemoveType>Action</RemoveType><RemoveType>x</RemoveType></r>").type,
              RemoveRequest::All);
}

TEST(RemoveRequest, WritesEachTypeByItsName) {
    char const* const names[] = {"Action", "Offer", "Message", "All"};
    for (unsigned int value = 0; value < 4; ++value) {
        RemoveRequest request;
        request.type = static_cast<RemoveRequest::RemoveType>(value);
        EXPECT_EQ(Written(request), MakeUTF8Ref("<RemoveType>" + std::string(names[value]) +
                                                "</RemoveType><ID>0</ID><Deleted>false</Deleted>"));
    }
}

TEST(RemoveRequest, WritesTypeThenIDThenDeleted) {
    RemoveRequest request;
    request.type = RemoveRequest::Offer;
    request.id = 5;
    request.deleted = true;
    EXPECT_EQ(Written(request), "<RemoveType>Offer</RemoveType><ID>5</ID><Deleted>true</Deleted>"_utf8);
    request.type = static_cast<RemoveRequest::RemoveType>(4);
    request.deleted = false;
    EXPECT_EQ(Written(request), "<ID>5</ID><Deleted>false</Deleted>"_utf8);
}

TEST(QuietModeStart, ReadsBothTimes) {
    auto const period = ReadRecord<QuietModeStart>("<q><StartTime>Sun, 02 Jan 2011 08:05:09 +0000</StartTime>"
                                                   "<EndTime>Sun, 02 Jan 2011 08:05:10 +0000</EndTime></q>");
    EXPECT_EQ(Instant(period.startTime), cSomeInstant);
    EXPECT_EQ(Instant(period.endTime), Instant::FromMicroseconds(1293955510000000));
}

TEST(QuietModeStart, MissingTimesAreTheDefaultTime) {
    auto const period = ReadRecord<QuietModeStart>("<q></q>");
    EXPECT_EQ(period.startTime, TimeObject());
    EXPECT_EQ(period.endTime, TimeObject());
}

TEST(InitializationInfo, DefaultsAreThoseOfTheConstructor) {
    InitialUISettings const settings = ReadRecord<InitializationInfo>("<i></i>").settings;
    EXPECT_EQ(settings.remindInterval, TimeInterval());
    EXPECT_TRUE(settings.remindTime.IsNull());
    EXPECT_EQ(settings.historyMode, 0u);
    EXPECT_TRUE(settings.maxHistoryAge.IsNull());
    EXPECT_EQ(settings.techHistoryMode, 0u);
    EXPECT_TRUE(settings.maxTechHistoryAge.IsNull());
    EXPECT_EQ(settings.balloonMode, 1u);
    EXPECT_EQ(settings.trayMode, 2u);
    EXPECT_TRUE(settings.hasMainDialog);
    EXPECT_TRUE(settings.allowSnooze);
    EXPECT_FALSE(settings.alwaysTopmost);
    EXPECT_TRUE(settings.displaySingleActionSummary);
    EXPECT_FALSE(settings.useLocale);
    EXPECT_FALSE(settings.persistRunningMessage);
    EXPECT_FALSE(settings.topmostRunningMessage);
    EXPECT_EQ(settings.idleThreshold, TimeInterval());
    EXPECT_FALSE(settings.useActivityTracking);
    EXPECT_FALSE(settings.actionRunningTray);
    EXPECT_TRUE(settings.initialTabID.IsNull());
    EXPECT_FALSE(settings.hideProgressTab);
    EXPECT_EQ(settings.mainDialogMinWidth, 0u);
    EXPECT_EQ(settings.mainDialogMinHeight, 0u);
    EXPECT_TRUE(settings.selfServiceApp.IsNull());
    EXPECT_EQ(settings.ssaV2Mode, 0u);
    EXPECT_FALSE(settings.ssaV3Enable);
}

TEST(InitializationInfo, ReadsEverySettingIntoItsPlace) {
    InitialUISettings const settings =
        ReadRecord<InitializationInfo>(
            "<i><InitialUISettings><RemindInterval>PT10M</RemindInterval>"
            "<RemindTime>Sun, 02 Jan 2011 08:05:09 +0000</RemindTime><HistoryMode>3</HistoryMode>"
            "<MaxHistoryAge>P1D</MaxHistoryAge><TechHistoryMode>4</TechHistoryMode>"
            "<MaxTechHistoryAge>P2D</MaxTechHistoryAge><BalloonMode>5</BalloonMode><TrayMode>6</TrayMode>"
            "<HasMainDialog>false</HasMainDialog><AllowSnooze>false</AllowSnooze>"
            "<AlwaysTopmost>true</AlwaysTopmost>"
            "<DisplaySingleActionSummary>false</DisplaySingleActionSummary><UseLocale>true</UseLocale>"
            "<PersistRunningMessage>true</PersistRunningMessage>"
            "<TopmostRunningMessage>true</TopmostRunningMessage><IdleThreshold>PT1S</IdleThreshold>"
            "<UseActivityTracking>true</UseActivityTracking><ActionRunningTray>true</ActionRunningTray>"
            "<InitialTabID>tab</InitialTabID><HideProgressTab>true</HideProgressTab>"
            "<MainDialogMinWidth>7</MainDialogMinWidth><MainDialogMinHeight>8</MainDialogMinHeight>"
            "<SelfServiceApp>app</SelfServiceApp><SSAv2Mode>9</SSAv2Mode><SSAv3Enable>true</SSAv3Enable>"
            "</InitialUISettings></i>")
            .settings;
    EXPECT_EQ(settings.remindInterval, TimeInterval::FromMicroseconds(600000000));
    EXPECT_EQ(Instant(*settings.remindTime), cSomeInstant);
    EXPECT_EQ(settings.historyMode, 3u);
    EXPECT_EQ(*settings.maxHistoryAge, TimeInterval::FromMicroseconds(86400000000));
    EXPECT_EQ(settings.techHistoryMode, 4u);
    EXPECT_EQ(*settings.maxTechHistoryAge, TimeInterval::FromMicroseconds(172800000000));
    EXPECT_EQ(settings.balloonMode, 5u);
    EXPECT_EQ(settings.trayMode, 6u);
    EXPECT_FALSE(settings.hasMainDialog);
    EXPECT_FALSE(settings.allowSnooze);
    EXPECT_TRUE(settings.alwaysTopmost);
    EXPECT_FALSE(settings.displaySingleActionSummary);
    EXPECT_TRUE(settings.useLocale);
    EXPECT_TRUE(settings.persistRunningMessage);
    EXPECT_TRUE(settings.topmostRunningMessage);
    EXPECT_EQ(settings.idleThreshold, TimeInterval::FromMicroseconds(1000000));
    EXPECT_TRUE(settings.useActivityTracking);
    EXPECT_TRUE(settings.actionRunningTray);
    EXPECT_EQ(*settings.initialTabID, "tab"_utf8);
    EXPECT_TRUE(settings.hideProgressTab);
    EXPECT_EQ(settings.mainDialogMinWidth, 7u);
    EXPECT_EQ(settings.mainDialogMinHeight, 8u);
    EXPECT_EQ(*settings.selfServiceApp, "app"_utf8);
    EXPECT_EQ(settings.ssaV2Mode, 9u);
    EXPECT_TRUE(settings.ssaV3Enable);
}

TEST(InitializationInfo, EachFlagHasAnElementOfItsOwn) {
    struct Flag {
        char const* name;
        bool InitialUISettings::*field;
    };
    Flag const flags[] = {{"HasMainDialog", &InitialUISettings::hasMainDialog},
                          {"AllowSnooze", &InitialUISettings::allowSnooze},
                          {"AlwaysTopmost", &InitialUISettings::alwaysTopmost},
                          {"DisplaySingleActionSummary", &InitialUISettings::displaySingleActionSummary},
                          {"UseLocale", &InitialUISettings::useLocale},
                          {"PersistRunningMessage", &InitialUISettings::persistRunningMessage},
                          {"TopmostRunningMessage", &InitialUISettings::topmostRunningMessage},
                          {"UseActivityTracking", &InitialUISettings::useActivityTracking},
                          {"ActionRunningTray", &InitialUISettings::actionRunningTray},
                          {"HideProgressTab", &InitialUISettings::hideProgressTab},
                          {"SSAv3Enable", &InitialUISettings::ssaV3Enable}};
    InitialUISettings const defaults;
    for (Flag const& flipped : flags) {
        std::string const name(flipped.name);
        std::string const text = defaults.*flipped.field ? "false" : "true";
        InitialUISettings const settings =
            ReadRecord<InitializationInfo>("<i><InitialUISettings><" + name + ">" + text + "</" + name +
                                           "></InitialUISettings></i>")
                .settings;
        for (Flag const& flag : flags)
            EXPECT_EQ(settings.*flag.field != defaults.*flag.field, flag.field == flipped.field)
                << name << " and " << flag.name;
    }
}

TEST(InitializationInfo, EmptyTimeAndIntervalAreBadOnes) {
    EXPECT_THROW(ReadRecord<InitializationInfo>(
                     "<i><InitialUISettings><RemindTime></RemindTime></InitialUISettings></i>"),
                 ParsingFailure);
    EXPECT_THROW(ReadRecord<InitializationInfo>(
                     "<i><InitialUISettings><RemindInterval></RemindInterval></InitialUISettings></i>"),
                 ExceptionPL);
}

TEST(InitializationInfo, ASettingThatDoesNotParseThrowsEvenIfNothingUsesIt) {
    EXPECT_THROW(ReadRecord<InitializationInfo>(
                     "<i><InitialUISettings><TrayMode>x</TrayMode></InitialUISettings></i>"),
                 NotANumeral);
    EXPECT_THROW(ReadRecord<InitializationInfo>(
                     "<i><InitialUISettings><SSAv2Mode>4294967296</SSAv2Mode></InitialUISettings></i>"),
                 NumeralTooLarge);
}
