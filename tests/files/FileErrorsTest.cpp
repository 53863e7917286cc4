#include "files/FileErrors.h"

#include "format/FormatOverrideContext.h"
#include "format/FormatOverrideScope.h"
#include "format/FormatOverrideSet.h"

#include "tests/support/Allocations.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/UStringPrinting.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace {

FileLocation Text(std::string const& path) {
    return FileLocation(MakeUTF8Ref(path));
}

std::string Plain(UStringRef<UTF8> const& text) {
    return MakeString(text);
}

// The encoded name of the class that is thrown for a code; "" when nothing is.
std::string ClassThrownFor(int code) {
    try {
        ThrowFileError(Text("/x"), code);
    } catch (FileIOError const& failure) {
        EXPECT_EQ(failure.GetCode(), code);
        return typeid(failure).name();
    }
    return "";
}

// Puts the lines of a translation file in force for all texts of the program.
class Translation {
public:
    explicit Translation(std::string const& lines)
        : m_lines(lines),
          m_set(MakeUTF8Ref(m_lines), UStringRef<UTF8>()),
          m_scope(m_set, GlobalFormatOverrideContext()) {}

private:
    std::string const m_lines;
    FormatOverrideSet const m_set;
    FormatOverrideScope const m_scope;
};

// Both reports are the same, and hold the class's name alone.
template <class Failure>
void ExpectFamilyMember(char const* name) {
    static_assert(std::is_base_of_v<FileIOError, Failure>);
    static_assert(sizeof(Failure) == sizeof(FileIOError));
    std::string const sentence = std::string("File error \"") + name + "\"";
    EXPECT_EQ(Plain(Failure(0).uwhat()), sentence);
    EXPECT_STREQ(Failure(0).what(), sentence.c_str());
    EXPECT_EQ(Plain(Failure(Text("/x"), 0).uwhat()), sentence + " on \"/x\"");
    EXPECT_EQ(Plain(Failure(Text("/x"), Text("/y"), 0).uwhat()), sentence + " on \"/x\" and \"/y\"");
    EXPECT_THROW(throw Failure(3), FileIOError);
}

std::string const cMissing = "File error \"17FileNotFoundError\" on \"/var/x\" : "
                             "\"Error 0x2%: No such file or directory\"";

} // namespace

static_assert(std::is_base_of_v<DebuggableException, FileIOError>);
static_assert(std::is_base_of_v<ExceptionPL, BinaryManipulationNotSupported>);
static_assert(!std::is_base_of_v<FileIOError, BinaryManipulationNotSupported>);
// The exception itself is its table of operations and one pointer.
static_assert(sizeof(FileIOError) == sizeof(DebuggableException) + sizeof(void*));

TEST(FileIOError, ReportsItsClassAlone) {
    FileIOError const failure(0);
    EXPECT_EQ(Plain(failure.uwhat()), "File error \"11FileIOError\"");
    EXPECT_STREQ(failure.what(), "File error \"11FileIOError\"");
    EXPECT_EQ(failure.GetCode(), 0);
}

TEST(FileIOError, ReportsItsLocationWithoutAColonForCodeZero) {
    EXPECT_EQ(Plain(FileIOError(Text("/var/x"), 0).uwhat()), "File error \"11FileIOError\" on \"/var/x\"");
}

TEST(FileIOError, ReportsTheReasonOfACode) {
    FileIOError const failure(ENOENT);
    EXPECT_EQ(Plain(failure.uwhat()),
              "File error \"11FileIOError\" : \"Error 0x2%: No such file or directory\"");
    EXPECT_EQ(failure.GetCode(), 2);
    EXPECT_EQ(Plain(FileNotFoundError(Text("/var/x"), ENOENT).uwhat()), cMissing);
}

TEST(FileIOError, NamesTwoLocationsInTheirOrder) {
    EXPECT_EQ(Plain(FileMoveError(Text("/from"), Text("/to"), EXDEV).uwhat()),
              "File error \"13FileMoveError\" on \"/from\" and \"/to\" : "
              "\"Error 0x18%: Invalid cross-device link\"");
}

TEST(FileIOError, NamesTheSecondLocationEvenIfTheFirstIsEmpty) {
    EXPECT_EQ(Plain(FileIOError(FileLocation(), Text("/to"), 0).uwhat()),
              "File error \"11FileIOError\" and \"/to\"");
    EXPECT_EQ(Plain(FileIOError(Text("/from"), FileLocation(), 0).uwhat()),
              "File error \"11FileIOError\" on \"/from\"");
}

TEST(FileIOError, ShowsABinaryLocationInHexadecimal) {
    UStringRef<Binary8Bit> const bytes(Binary8Bit(), "/\xE4"_data);
    EXPECT_EQ(Plain(FileIOError(FileLocation(bytes), 0).uwhat()), "File error \"11FileIOError\" on \"2fe4\"");
}

TEST(FileIOError, ShowsTheTextOfABinaryLocationThatHasOne) {
    UStringRef<Binary8Bit> const bytes(Binary8Bit(), "/ab"_data);
    FileIOError const failure(FileLocation(bytes), 0);
    EXPECT_EQ(Plain(failure.uwhat()), "File error \"11FileIOError\" on \"2f6162 (UTF8: /ab)\"");
    EXPECT_STREQ(failure.what(), "File error \"11FileIOError\" on \"2f6162 (UTF8: /ab)\"");
}

TEST(FileIOError, SpeaksTheLanguageOfATranslation) {
    FileMoveError const failure(Text("/from"), Text("/to"), EXDEV);
    {
        Translation const german("File error \"{e}\"\tDateifehler '{e}'\n"
                                 "{s} on \"{p}\"\t{s} an '{p}'\n"
                                 "{s} and \"{p}\"\t'{p}' als Ziel: {s}\n"
                                 "{s} : \"{e}\"\t{s}, und zwar {e}\n");
        std::string const sentence = "'/to' als Ziel: Dateifehler '13FileMoveError' an '/from', und zwar "
                                     "Error 0x18%: Invalid cross-device link";
        EXPECT_EQ(Plain(failure.uwhat()), sentence);
        EXPECT_EQ(failure.what(), sentence);
    }
    EXPECT_EQ(Plain(failure.uwhat()), "File error \"13FileMoveError\" on \"/from\" and \"/to\" : "
                                      "\"Error 0x18%: Invalid cross-device link\"");
}

TEST(FileIOError, ReportsTheClassNameWhenATranslationIsBroken) {
    FileMoveError const failure(Text("/from"), Text("/to"), EXDEV);
    char const* const formats[] = {"File error \"{e}\"", "{s} on \"{p}\"", "{s} and \"{p}\"", "{s} : \"{e}\"",
                                   "Error 0x{e}%: {s}"};
    // A variable that the original lacks, one without a name, and one that does not end.
    for (char const* const broken : {"{x}", "{}", "text {e"})
        for (char const* const format : formats) {
            Translation const translation(std::string(format) + "\t" + broken + "\n");
            EXPECT_STREQ(failure.what(), "13FileMoveError") << format << broken;
            EXPECT_EQ(failure.uwhat(), "13FileMoveError"_utf8) << format << broken;
        }
    EXPECT_EQ(Plain(failure.uwhat()).substr(0, 28), "File error \"13FileMoveError\"");
}

TEST(FileIOError, DoesNotDependOnItsLocation) {
    FileLocation location = Text("/" + std::string(200, 'x'));
    FileIOError const failure(location, 0);
    location = Text("/other");
    EXPECT_EQ(Plain(failure.uwhat()), "File error \"11FileIOError\" on \"/" + std::string(200, 'x') + "\"");
}

TEST(FileIOError, TakesBracesInAPathAsTheyAre) {
    EXPECT_EQ(Plain(FileIOError(Text("/{p}{"), Text("/{s}}"), 0).uwhat()),
              "File error \"11FileIOError\" on \"/{p}{\" and \"/{s}}\"");
}

TEST(FileIOError, CopiesDeeply) {
    FileNotFoundError const original(Text("/var/x"), ENOENT);
    FileNotFoundError const copy(original);
    char const* const words = original.what();
    EXPECT_EQ(Plain(copy.uwhat()), cMissing);
    EXPECT_STREQ(copy.what(), cMissing.c_str());
    EXPECT_NE(copy.what(), words);
    EXPECT_NE(copy.uwhat().begin(), original.uwhat().begin());
    EXPECT_EQ(copy.GetCode(), 2);
}

TEST(FileIOError, AssignsDeeply) {
    FileIOError target(Text("/target"), EIO);
    {
        FileIOError const source(Text("/source"), Text("/second"), 0);
        target = source;
        EXPECT_NE(target.uwhat().begin(), source.uwhat().begin());
    }
    EXPECT_EQ(Plain(target.uwhat()), "File error \"11FileIOError\" on \"/source\" and \"/second\"");
    EXPECT_EQ(target.GetCode(), 0);
    FileIOError const& self = target;
    target = self;
    EXPECT_EQ(Plain(target.uwhat()), "File error \"11FileIOError\" on \"/source\" and \"/second\"");
}

TEST(FileIOError, KeepsTheClassOfTheObjectAssignedTo) {
    FileIOError const source(Text("/source"), 0);
    FileLockError target(7);
    static_cast<FileIOError&>(target) = source;
    EXPECT_EQ(Plain(target.uwhat()), "File error \"13FileLockError\" on \"/source\"");
}

TEST(FileIOError, MakesTheSentenceOnlyWhenAsked) {
    FileLocation const location = Text("/x");
    unsigned long const before = AllocationCount();
    { FileNotFoundError const failure(location, ENOENT); }
    EXPECT_EQ(AllocationCount(), before + 1);
}

TEST(FileIOError, ReportsTheClassNameWhenTheSentenceCannotBeMade) {
    FileNotFoundError const failure(Text("/" + std::string(300, 'x')), 0);
    {
        FailingAllocation const noMemory(0);
        EXPECT_STREQ(failure.what(), "17FileNotFoundError");
        EXPECT_EQ(failure.uwhat(), "17FileNotFoundError"_utf8);
    }
    EXPECT_EQ(Plain(failure.uwhat()),
              "File error \"17FileNotFoundError\" on \"/" + std::string(300, 'x') + "\"");
}

TEST(FileIOError, ReportsTheClassNameWhereverMemoryRunsOut) {
    FileIOError const failure(Text("/" + std::string(300, 'x')), ENOENT);
    std::string const sentence = failure.what();
    for (std::size_t successes = 0; successes < 50; ++successes) {
        std::string report;
        report.reserve(1000);
        {
            FailingAllocation const noMemory(successes);
            report = failure.what();
        }
        if (report == sentence) {
            EXPECT_GT(successes, 2u);
            return;
        }
        ASSERT_EQ(report, "11FileIOError") << successes;
    }
    FAIL() << "The sentence is never made.";
}

TEST(FileIOError, LetsAFailureOfMemoryOutOfItsConstructor) {
    FileLocation const location = Text("/x");
    FailingAllocation const noMemory(0, 1);
    EXPECT_THROW(FileIOError(location, 0), std::bad_alloc);
}

TEST(FileIOError, ReportsTheClassNameWhenTheLocaleCannotSpellTheSentence) {
    FileIOError const failure(Text("/gr\xC3\xBC"), 0);
    EXPECT_STREQ(failure.what(), "11FileIOError");
    EXPECT_EQ(failure.uwhat(), "11FileIOError"_utf8);
    EXPECT_THROW(failure.MakeErrorMessage(), UnixPlatform::WideToMultiByteConvertError);
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_STREQ(failure.what(), "File error \"11FileIOError\" on \"/gr\xFC\"");
    EXPECT_EQ(failure.uwhat(), "File error \"11FileIOError\" on \"/gr\xC3\xBC\""_utf8);
}

TEST(FileIOError, IsTheRootOfTheFamily) {
    ExpectFamilyMember<FileIOError>("11FileIOError");
    ExpectFamilyMember<CreateUniqueFileLocationFailed>("30CreateUniqueFileLocationFailed");
    ExpectFamilyMember<DirectoryCreateFailed>("21DirectoryCreateFailed");
    ExpectFamilyMember<DirectoryFoundError>("19DirectoryFoundError");
    ExpectFamilyMember<DirectoryNotFoundError>("22DirectoryNotFoundError");
    ExpectFamilyMember<EmptyFileLocationError>("22EmptyFileLocationError");
    ExpectFamilyMember<EndOfFileError>("14EndOfFileError");
    ExpectFamilyMember<FileCreateFailed>("16FileCreateFailed");
    ExpectFamilyMember<FileDiskFullError>("17FileDiskFullError");
    ExpectFamilyMember<FileExistsError>("15FileExistsError");
    ExpectFamilyMember<FileFoundError>("14FileFoundError");
    ExpectFamilyMember<FileItemError>("13FileItemError");
    ExpectFamilyMember<FileLockError>("13FileLockError");
    ExpectFamilyMember<FileMoveError>("13FileMoveError");
    ExpectFamilyMember<FileNotFoundError>("17FileNotFoundError");
    ExpectFamilyMember<FileNotOpenError>("16FileNotOpenError");
    ExpectFamilyMember<FilePermissionError>("19FilePermissionError");
    ExpectFamilyMember<FileResourceError>("17FileResourceError");
    ExpectFamilyMember<FileSeekError>("13FileSeekError");
    ExpectFamilyMember<InvalidFileLocation>("19InvalidFileLocation");
    ExpectFamilyMember<InvalidStats>("12InvalidStats");
    ExpectFamilyMember<RootHasNoParent>("15RootHasNoParent");
}

TEST(FileNotFoundError, NeedsNoLocation) {
    EXPECT_EQ(Plain(FileNotFoundError().uwhat()), "File error \"17FileNotFoundError\"");
    EXPECT_EQ(FileNotFoundError().GetCode(), 0);
}

TEST(FileNotFoundError, IsToldFromAFailedRead) {
    auto const outcome = [](int code) {
        try {
            ThrowFileError(Text("/x"), code);
        } catch (FileNotFoundError const&) {
            return 1;
        } catch (FileIOError const&) {
            return 2;
        }
        return 0;
    };
    EXPECT_EQ(outcome(ENOENT), 1);
    EXPECT_EQ(outcome(EIO), 2);
}

TEST(BinaryManipulationNotSupported, SaysSo) {
    EXPECT_STREQ(BinaryManipulationNotSupported().what(), "Operation not supported for Binary data.");
    EXPECT_EQ(BinaryManipulationNotSupported().uwhat(), "Operation not supported for Binary data."_utf8);
}

TEST(ThrowFileError, DoesNothingForCodeZero) {
    EXPECT_NO_THROW(ThrowFileError(Text("/x"), 0));
    EXPECT_NO_THROW(ThrowFileError(FileLocation(), 0));
}

TEST(ThrowFileError, ChoosesTheClassByTheCode) {
    for (int code = 1; code < 300; ++code) {
        char const* expected = "11FileIOError";
        switch (code) {
        case 1:
        case 13: expected = "19FilePermissionError"; break;
        case 2: expected = "17FileNotFoundError"; break;
        case 11: expected = "13FileLockError"; break;
        case 12:
        case 23:
        case 24: expected = "17FileResourceError"; break;
        case 20:
        case 36: expected = "22DirectoryNotFoundError"; break;
        default: break;
        }
        EXPECT_EQ(ClassThrownFor(code), expected) << code;
    }
    EXPECT_EQ(ClassThrownFor(9999), "11FileIOError");
    EXPECT_EQ(ClassThrownFor(-1), "11FileIOError");
}

TEST(ThrowFileError, NamesTheLocation) {
    try {
        ThrowFileError(Text("/var/x"), ENOENT);
        FAIL() << "Nothing was thrown.";
    } catch (FileNotFoundError const& failure) {
        EXPECT_EQ(Plain(failure.uwhat()), cMissing);
    }
    try {
        ThrowFileError(Text("/var/x"), 9999);
        FAIL() << "Nothing was thrown.";
    } catch (FileIOError const& failure) {
        EXPECT_EQ(Plain(failure.uwhat()),
                  "File error \"11FileIOError\" on \"/var/x\" : \"Error 0x9999%: Unknown error 9999\"");
    }
}

TEST(MakeErrorString, GivesTheDecimalNumberAndTheText) {
    EXPECT_EQ(MakeErrorString(2), "Error 0x2%: No such file or directory"_utf8);
    EXPECT_EQ(MakeErrorString(0), "Error 0x0%: Success"_utf8);
    EXPECT_EQ(MakeErrorString(28), "Error 0x28%: No space left on device"_utf8);
    EXPECT_EQ(MakeErrorString(9999), "Error 0x9999%: Unknown error 9999"_utf8);
}

TEST(MakeErrorString, GivesAnyNumberOf32Bits) {
    EXPECT_EQ(MakeErrorString(4294967295u), "Error 0x4294967295%: Unknown error -1"_utf8);
    EXPECT_EQ(MakeErrorString(2147483648u), "Error 0x2147483648%: Unknown error -2147483648"_utf8);
}

TEST(MakeErrorString, KnowsNoTextThatCannotBeConverted) {
    // The system's texts are in the local encoding, so that a conversion without memory stands for one of a
    // text that is not: at one of the allocations it is the conversion that fails.
    AutoUString<UTF8> sentence;
    for (std::size_t successes = 0; successes < 20; ++successes) {
        FailingAllocation const noMemory(successes, 1);
        try {
            sentence = MakeErrorString(2);
        } catch (std::bad_alloc const&) {
            continue;
        }
        if (sentence == "Error 0x2%: Unknown"_utf8) return;
    }
    FAIL() << "The last sentence was " << Plain(sentence);
}
