#include "link/InitializationInfo.h"
#include "tests/support/Reading.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

// Which of the client's support files is meant.

namespace {

FileTransfer File(FileName const& name, char const* content, char const* subFolder = "") {
    FileTransfer file;
    file.fileName = name;
    file.subFolder = FileName(MakeUTF8Ref(subFolder));
    file.content = CopiedUString<UTF8>(MakeUTF8Ref(content));
    return file;
}

FileTransfer File(char const* name, char const* content, char const* subFolder = "") {
    return File(FileName(MakeUTF8Ref(name)), content, subFolder);
}

InitializationInfo With(std::vector<FileTransfer> files) {
    InitializationInfo info;
    info.supportFiles = std::move(files);
    return info;
}

// The content of what was found; "none" for null.
std::string Found(NullOrConstRef<FileTransfer> const& file) {
    return file ? MakeString(file->content) : "none";
}

} // namespace

TEST(SupportFiles, TheMessageBringsThemInItsOrder) {
    auto const info = ReadRecord<InitializationInfo>(
        "<i><SupportFiles><FileName>a</FileName></SupportFiles><BaseDirectory>/b/</BaseDirectory>"
        "<SupportFiles><FileName>c</FileName></SupportFiles></i>");
    ASSERT_EQ(info.supportFiles.size(), 2u);
    EXPECT_EQ(info.supportFiles[0].fileName.Text(), "a"_utf8);
    EXPECT_EQ(info.supportFiles[1].fileName.Text(), "c"_utf8);
    EXPECT_EQ(info.baseDirectory.Text(), "/b"_utf8);
}

TEST(SupportFiles, EachHasItsName) {
    InitializationInfo const info =
        With({File("_currentTechnician.html", "technician"), File("_currentDashboard.html", "dashboard"),
              File("_brand.xlat", "brand"), File("_noselection.html", "no selection"),
              File("_clientui.ico", "icon")});
    EXPECT_EQ(Found(info.TechnicianPage()), "technician");
    EXPECT_EQ(Found(info.Dashboard()), "dashboard");
    EXPECT_EQ(Found(info.BrandTranslation()), "brand");
    EXPECT_EQ(Found(info.NoSelectionPage()), "no selection");
    EXPECT_EQ(Found(info.BrandIcon()), "icon");
}

TEST(SupportFiles, WithoutAFileThereIsNone) {
    InitializationInfo const info = With({File("other", "x")});
    EXPECT_EQ(Found(info.TechnicianPage()), "none");
    EXPECT_EQ(Found(info.Dashboard()), "none");
    EXPECT_EQ(Found(info.BrandTranslation()), "none");
    EXPECT_EQ(Found(info.NoSelectionPage()), "none");
    EXPECT_EQ(Found(info.BrandIcon()), "none");
}

TEST(SupportFiles, CapitalsDoNotMatter) {
    EXPECT_EQ(Found(With({File("_BRAND.XLAT", "brand")}).BrandTranslation()), "brand");
    EXPECT_EQ(Found(With({File("DE_de.XLAT", "general")}).GeneralLocalization("de_DE"_utf8, "de"_utf8)),
              "general");
}

TEST(SupportFiles, ASubFolderHidesAFile) {
    EXPECT_EQ(Found(With({File("_brand.xlat", "brand", "x")}).BrandTranslation()), "none");
    EXPECT_EQ(
        Found(With({File("_brand.xlat", "hidden", "x"), File("_brand.xlat", "brand")}).BrandTranslation()),
        "brand");
}

TEST(SupportFiles, OfTwoOfOneNameTheFirstIsMeant) {
    EXPECT_EQ(Found(With({File("_brand.xlat", "first"), File("_brand.xlat", "second")}).BrandTranslation()),
              "first");
}

TEST(SupportFiles, ANameInBytesIsReadAsUTF8) {
    FileName const name(UStringRef<Binary8Bit>(Binary8Bit(), "_brand.xlat"_data));
    EXPECT_EQ(Found(With({File(name, "brand")}).BrandTranslation()), "brand");
}

TEST(SupportFiles, TheLanguageIsTriedAfterTheFullName) {
    InitializationInfo const both = With({File("de.xlat", "language"), File("de_DE.xlat", "full")});
    EXPECT_EQ(Found(both.GeneralLocalization("de_DE"_utf8, "de"_utf8)), "full");
    EXPECT_EQ(Found(both.GeneralLocalization("de_AT"_utf8, "de"_utf8)), "language");
    EXPECT_EQ(Found(both.GeneralLocalization("de_AT"_utf8, ""_utf8)), "none");
    EXPECT_EQ(Found(both.GeneralLocalization(""_utf8, "de"_utf8)), "language");
    EXPECT_EQ(Found(both.GeneralLocalization("de"_utf8, ""_utf8)), "language");
}

TEST(SupportFiles, NothingStandsBetweenThePrefixAndTheLocale) {
    InitializationInfo const info = With({File("_brandde.xlat", "language"), File("_brandde_DE.xlat", "full"),
                                          File("_brand_de.xlat", "wrong"), File("de.xlat", "general")});
    EXPECT_EQ(Found(info.LocalizedBrandTranslation("de_DE"_utf8, "de"_utf8)), "full");
    EXPECT_EQ(Found(info.LocalizedBrandTranslation("de_AT"_utf8, "de"_utf8)), "language");
    EXPECT_EQ(Found(info.GetLocalization("_brand_"_utf8, "de"_utf8, ""_utf8)), "wrong");
}

TEST(SupportFiles, WithoutALocaleNothingIsLookedFor) {
    InitializationInfo const info = With({File(".xlat", "nameless"), File("_brand.xlat", "brand")});
    EXPECT_EQ(Found(info.GeneralLocalization(""_utf8, ""_utf8)), "none");
    EXPECT_EQ(Found(info.LocalizedBrandTranslation(""_utf8, ""_utf8)), "none");
}

TEST(InitializationInfo, PersistentDataIsAllButTheFiles) {
    InitializationInfo from = With({File("a", "x")});
    from.baseDirectory = FileLocation("/base"_utf8);
    from.settings.remindTime = NullOr<TimeObject>(TimeObject());
    from.settings.initialTabID = NullOr<CopiedUString<UTF8>>(CopiedUString<UTF8>("tab"_utf8));
    from.settings.idleThreshold = TimeInterval::FromMicroseconds(7);
    from.settings.ssaV3Enable = true;
    InitializationInfo to = With({File("b", "y"), File("c", "z")});
    to.CopyPersistentData(from);
    from.settings.initialTabID = NullOr<CopiedUString<UTF8>>();
    EXPECT_EQ(to.supportFiles.size(), 2u);
    EXPECT_EQ(to.baseDirectory.Text(), "/base"_utf8);
    EXPECT_FALSE(to.settings.remindTime.IsNull());
    ASSERT_FALSE(to.InitialTabID().IsNull());
    EXPECT_EQ(to.InitialTabID()->Ref(), "tab"_utf8);
    EXPECT_EQ(to.settings.idleThreshold.Microseconds(), 7);
    EXPECT_TRUE(to.settings.ssaV3Enable);
    to.CopyPersistentData(to);
    EXPECT_EQ(to.InitialTabID()->Ref(), "tab"_utf8);
    EXPECT_EQ(to.baseDirectory.Text(), "/base"_utf8);
}
