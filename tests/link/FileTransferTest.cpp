#include "link/FileTransfer.h"

#include "files/FileErrors.h"
#include "link/FileXML.h"
#include "tests/support/Reading.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"
#include "text/UStringBuilder.h"
#include "xml/XMLSerialize.h"

#include <gtest/gtest.h>

namespace {

FileTransfer WithContent(std::string const& base64) {
    FileTransfer file;
    file.content = CopiedUString<UTF8>(MakeUTF8Ref(base64));
    return file;
}

std::string Written(std::string const& base64) {
    TemporaryFolder const folder;
    WithContent(base64).WriteToFile(folder.Location("file"));
    EXPECT_TRUE(folder.Has("file"));
    return folder.Read("file");
}

FileTransfer ReadFrom(std::string const& bytes) {
    TemporaryFolder const folder;
    folder.Write("file", bytes);
    FileTransfer file;
    file.ReadFromFile(folder.Location("file"));
    return file;
}

template <class Value>
std::string Saved(Value const& value) {
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    XMLWriter writer(builder, XMLWriter::Compact);
    XMLSave(writer, "f"_utf8, value);
    return MakeString(builder.Take());
}

} // namespace

TEST(FileTransfer, IsEmptyAtFirst) {
    FileTransfer const file;
    EXPECT_TRUE(file.fileName.empty());
    EXPECT_TRUE(file.subFolder.empty());
    EXPECT_TRUE(file.content.empty());
}

TEST(FileTransfer, ReadsItsFields) {
    FileTransfer file;
    XMLLoad(
        *ParsedElement("<f><FileName>a.txt</FileName><SubFolder>b</SubFolder><Content>QUJD</Content></f>"),
        file);
    EXPECT_EQ(file.fileName.Text(), "a.txt"_utf8);
    EXPECT_EQ(file.subFolder.Text(), "b"_utf8);
    EXPECT_EQ(file.content.Ref(), "QUJD"_utf8);
}

TEST(FileTransfer, AListGrowsByEachElementOfItsName) {
    std::vector<FileTransfer> files(1);
    XMLLoad(*ParsedElement("<m><S><FileName>a</FileName></S><T><FileName>x</FileName></T>"
                           "<S></S><S><Content>QQ==</Content></S></m>"),
            "S"_utf8, files);
    ASSERT_EQ(files.size(), 4u);
    EXPECT_TRUE(files[0].fileName.empty());
    EXPECT_EQ(files[1].fileName.Text(), "a"_utf8);
    EXPECT_TRUE(files[2].fileName.empty());
    EXPECT_EQ(files[3].content.Ref(), "QQ=="_utf8);
}

TEST(FileTransfer, EmptyContentMakesAnEmptyFile) {
    EXPECT_EQ(Written(""), "");
}

TEST(FileTransfer, LinesDoNotMatter) {
    std::string const bytes("The bytes \0\xff\x80 of a file", 23);
    std::string const unwrapped = MakeString(ReadFrom(bytes).content);
    EXPECT_EQ(Written(unwrapped), bytes);
    for (std::string const breakText : {"\n", "\r", "\r\n", "\n\n", " \t"})
        for (std::size_t width = 1; width < 9; ++width) {
            std::string wrapped;
            for (std::size_t begin = 0; begin < unwrapped.size(); begin += width)
                wrapped += unwrapped.substr(begin, width) + breakText;
            EXPECT_EQ(Written(wrapped), bytes) << width;
        }
}

// Sizes on both sides of those of the pieces that the bytes go to the file in.
TEST(FileTransfer, EveryByteOfALargeFileIsWritten) {
    for (std::size_t const size : {16383u, 16384u, 16385u, 32768u, 200000u}) {
        std::string bytes;
        for (std::size_t place = 0; place < size; ++place) bytes += static_cast<char>(place * place / 7);
        std::string const lines = MakeString(ReadFrom(bytes).content);
        std::string unwrapped = lines;
        std::erase(unwrapped, '\n');
        EXPECT_TRUE(Written(lines) == bytes) << size << " in lines";
        EXPECT_TRUE(Written(unwrapped) == bytes) << size << " in one line";
    }
}

TEST(FileTransfer, WhatIsNoBase64IsSkipped) {
    EXPECT_EQ(Written("Q*U-J_D\xc3\xa4"), "ABC");
    EXPECT_EQ(Written("===="), "");
    EXPECT_EQ(Written("QUJ"), "AB");
}

TEST(FileTransfer, ReplacesAFileThatIsThere) {
    TemporaryFolder const folder;
    folder.Write("file", "something longer");
    WithContent("QUJD").WriteToFile(folder.Location("file"));
    EXPECT_EQ(folder.Read("file"), "ABC");
}

TEST(FileTransfer, WhatCannotBeWrittenThrows) {
    TemporaryFolder const folder;
    EXPECT_THROW(WithContent("QUJD").WriteToFile(folder.Location("none/file")), FileNotFoundError);
    EXPECT_THROW(WithContent("QUJD").WriteToFile(folder.Location()), FileIOError);
    EXPECT_THROW(WithContent("QUJD").WriteToFile(FileLocation()), EmptyFileLocationError);
    EXPECT_THROW(WithContent("QUJD").WriteToFile(FileLocation("/dev/full"_utf8)), FileDiskFullError);
    EXPECT_THROW(WithContent("QUJD").WriteToFile(folder.Location(std::string(300, 'x'))), FileIOError);
}

TEST(FileTransfer, ContentOfAFileComesInLinesOf64) {
    EXPECT_EQ(ReadFrom("").content.Ref(), ""_utf8);
    EXPECT_EQ(ReadFrom("ABC").content.Ref(), "QUJD"_utf8);
    std::string const content = MakeString(ReadFrom(std::string(49, '\0')).content);
    EXPECT_EQ(content, std::string(64, 'A') + "\nAA==");
}

TEST(FileTransfer, AFileThatCannotBeReadLeavesTheContent) {
    TemporaryFolder const folder;
    FileTransfer file = WithContent("QUJD");
    EXPECT_THROW(file.ReadFromFile(folder.Location("none")), FileNotFoundError);
    EXPECT_EQ(file.content.Ref(), "QUJD"_utf8);
}

TEST(FileTransfer, AMegabyteGoesThereAndBack) {
    std::string bytes(1 << 20, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>((index * 2654435761u) >> 13);
    TemporaryFolder const folder;
    folder.Write("from", bytes);
    FileTransfer file;
    file.ReadFromFile(folder.Location("from"));
    file.WriteToFile(folder.Location("to"));
    EXPECT_EQ(folder.Read("to"), bytes);
}

TEST(FileXML, NamesAndPathsTravelAsText) {
    EXPECT_EQ(Saved(FileName("a&b"_utf8)), "<f><![CDATA[a&b]]></f>");
    EXPECT_EQ(Saved(FileLocation("/a/b/"_utf8)), "<f>/a/b</f>");
    FileLocation location;
    XMLLoad(*ParsedElement("<f>/a/b/</f>"), location);
    EXPECT_EQ(location.Text(), "/a/b"_utf8);
    FileName name("old"_utf8);
    XMLLoad(*ParsedElement("<f></f>"), name);
    EXPECT_TRUE(name.empty());
}
