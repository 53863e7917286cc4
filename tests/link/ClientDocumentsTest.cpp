#include "link/ClientDocuments.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

ActionTaken Taken(unsigned long id, bool isCancel) {
    ActionTaken message;
    message.id = id;
    message.isCancel = isCancel;
    message.originator = SharedUString<UTF8>("ClientUI"_utf8);
    return message;
}

} // namespace

TEST(ClientDocuments, ReadyForDataHasEachFieldOnItsOwnLine) {
    EXPECT_EQ(ConvertToXML(ReadyForData()), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                            "<ClientToUI>\n"
                                            "\t<ReadyForData>\n"
                                            "\t\t<ProtocolVersionMin>1</ProtocolVersionMin>\n"
                                            "\t\t<ProtocolVersionMax>1</ProtocolVersionMax>\n"
                                            "\t\t<NewProtocolVersionMin>1</NewProtocolVersionMin>\n"
                                            "\t\t<NewProtocolVersionMax>1</NewProtocolVersionMax>\n"
                                            "\t\t<ClientUIPid>0</ClientUIPid>\n"
                                            "\t</ReadyForData>\n"
                                            "</ClientToUI>"_utf8);
}

TEST(ClientDocuments, ReadyForDataWritesEveryFieldFromItsOwnValue) {
    ReadyForData message;
    message.protocolVersionMin = 2;
    message.protocolVersionMax = 3;
    message.newProtocolVersionMin = 4;
    message.newProtocolVersionMax = 4294967295;
    message.clientUIPid = -12;
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<ClientToUI>\n"
                                     "\t<ReadyForData>\n"
                                     "\t\t<ProtocolVersionMin>2</ProtocolVersionMin>\n"
                                     "\t\t<ProtocolVersionMax>3</ProtocolVersionMax>\n"
                                     "\t\t<NewProtocolVersionMin>4</NewProtocolVersionMin>\n"
                                     "\t\t<NewProtocolVersionMax>4294967295</NewProtocolVersionMax>\n"
                                     "\t\t<ClientUIPid>-12</ClientUIPid>\n"
                                     "\t</ReadyForData>\n"
                                     "</ClientToUI>"_utf8);
}

TEST(ClientDocuments, ErrorMessageWritesItsTextBeforeItsCode) {
    ClientUIErrorMessage const message(ClientUIErrorMessage::TextNotConvertible, "MessageDialog"_utf8);
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<ClientToUI>\n"
                                     "\t<ClientUIErrorMessage>\n"
                                     "\t\t<DebugString>MessageDialog</DebugString>\n"
                                     "\t\t<ErrorCode>2</ErrorCode>\n"
                                     "\t</ClientUIErrorMessage>\n"
                                     "</ClientToUI>"_utf8);
}

TEST(ClientDocuments, ErrorMessageWithMarkupTravelsAsCData) {
    ClientUIErrorMessage const message(ClientUIErrorMessage::ToolkitWarning, "noFont <a&b>"_utf8);
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<ClientToUI>\n"
                                     "\t<ClientUIErrorMessage>\n"
                                     "\t\t<DebugString><![CDATA[noFont <a&b>]]></DebugString>\n"
                                     "\t\t<ErrorCode>1</ErrorCode>\n"
                                     "\t</ClientUIErrorMessage>\n"
                                     "</ClientToUI>"_utf8);
}

TEST(ClientDocuments, ActionTakenWithOriginatorHasFourFields) {
    EXPECT_EQ(ConvertToXML(Taken(18446744073709551615ul, true)),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<UIToClient>\n"
              "\t<ActionTaken>\n"
              "\t\t<IsCancel>true</IsCancel>\n"
              "\t\t<IsOffer>false</IsOffer>\n"
              "\t\t<ID>18446744073709551615</ID>\n"
              "\t\t<Originator>ClientUI</Originator>\n"
              "\t</ActionTaken>\n"
              "</UIToClient>"_utf8);
}

TEST(ClientDocuments, ActionTakenWithoutOriginatorHasThreeFields) {
    ActionTaken message;
    message.isOffer = true;
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<UIToClient>\n"
                                     "\t<ActionTaken>\n"
                                     "\t\t<IsCancel>false</IsCancel>\n"
                                     "\t\t<IsOffer>true</IsOffer>\n"
                                     "\t\t<ID>0</ID>\n"
                                     "\t</ActionTaken>\n"
                                     "</UIToClient>"_utf8);
}

TEST(ClientDocuments, RemindTimeHasNoOriginator) {
    RemindTime message;
    message.time = TimeObject(Instant::FromMicroseconds(1293955509000000), TimeZone());
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<UIToClient>\n"
                                     "\t<RemindTime>\n"
                                     "\t\t<TimeObject>Sun, 02 Jan 2011 08:05:09 +0000</TimeObject>\n"
                                     "\t</RemindTime>\n"
                                     "</UIToClient>"_utf8);
}

TEST(ClientDocuments, RemindTimeWritesAnOriginatorBehindItsTime) {
    RemindTime message;
    message.time = TimeObject(Instant::FromMicroseconds(1293955509000000), TimeZone::FromSeconds(3600));
    message.originator = SharedUString<UTF8>("x"_utf8);
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<UIToClient>\n"
                                     "\t<RemindTime>\n"
                                     "\t\t<TimeObject>Sun, 02 Jan 2011 09:05:09 +0100</TimeObject>\n"
                                     "\t\t<Originator>x</Originator>\n"
                                     "\t</RemindTime>\n"
                                     "</UIToClient>"_utf8);
}

TEST(ClientDocuments, TextsAreNeitherTrimmedNorLimited) {
    std::string const padded = " a\n";
    std::string const document = MakeString(
        ConvertToXML(ClientUIErrorMessage(ClientUIErrorMessage::ToolkitWarning, MakeUTF8Ref(padded))));
    EXPECT_NE(document.find("<DebugString> a\n</DebugString>"), std::string::npos);
    std::string const longText(3000000, 'x');
    EXPECT_GT(ConvertToXML(ClientUIErrorMessage(ClientUIErrorMessage::ToolkitWarning, MakeUTF8Ref(longText)))
                  .SizeInBytes(),
              3000000u);
}

TEST(ClientDocuments, RemindIntervalIsADuration) {
    RemindInterval message;
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<UIToClient>\n"
                                     "\t<RemindInterval>\n"
                                     "\t\t<TimeInterval>PT0S</TimeInterval>\n"
                                     "\t</RemindInterval>\n"
                                     "</UIToClient>"_utf8);
    message.interval = TimeInterval::FromMicroseconds(-300000000);
    message.originator = SharedUString<UTF8>("x"_utf8);
    EXPECT_EQ(ConvertToXML(message), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<UIToClient>\n"
                                     "\t<RemindInterval>\n"
                                     "\t\t<TimeInterval>-PT5M</TimeInterval>\n"
                                     "\t\t<Originator>x</Originator>\n"
                                     "\t</RemindInterval>\n"
                                     "</UIToClient>"_utf8);
}
