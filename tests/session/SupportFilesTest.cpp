#include "tests/support/SupportFiles.h"
#include "tests/files/ChildProcess.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/QuickFolder.h"
#include "tests/session/Documents.h"
#include "tests/session/WaitingProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <memory>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <vector>

// The files that come with the first message: what lies in the session directory behind it, and what happens
// when they cannot be laid down. A message that fails is not answered, so that each test of one sends another
// behind it: that one is taken only by a program that has not taken the first.

namespace {

using Texts = std::vector<std::string>;

// Something to unpack that no other index gives.
std::string Bytes(std::size_t size, unsigned int index) {
    std::string bytes(size, '\0');
    unsigned int state = index * 2654435761u + 12345u;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

std::string InLines(std::string const& text, std::size_t width, std::string const& lineEnd) {
    std::string lines;
    for (std::size_t position = 0; position < text.size(); position += width)
        lines += text.substr(position, width) + lineEnd;
    return lines;
}

// All that is below a folder, in order: "base/", "base/file: contents", "link -> target".
Texts Listing(std::string const& folder) {
    Texts lines;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::string const path = entry.path().string();
        std::string const name = path.substr(folder.size() + 1);
        if (entry.is_symlink())
            lines.push_back(name + " -> " + std::filesystem::read_symlink(entry.path()).string());
        else if (entry.is_directory())
            lines.push_back(name + "/");
        else
            lines.push_back(name + ": " + FileContents(path));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

// A program, and a folder with what it may touch, "base" and "good", and what it may not.
struct Situation {
    explicit Situation(std::function<void()> prepare = {}) : session(StartedAndReady(std::move(prepare))) {
        folder.MakeFolder("outside");
        folder.Write("outside/kept", "x");
    }

    void Send(std::string const& files, std::string const& settings = "") const {
        session->SendDocument(InitializationOf(folder.Path("base"), files, settings));
    }
    InitializingDocument Good() const {
        return {session.get(), InitializationOf(folder.Path("good"), SupportFile("taken", "yes"))};
    }

    TemporaryFolder folder;
    std::unique_ptr<ClientSession> session;
};

using Situations = std::vector<std::unique_ptr<Situation>>;

// Expects that no program has taken what it was sent so far, and that each takes a good message.
void ExpectRefused(Situations const& situations) {
    std::vector<InitializingDocument> documents;
    for (auto const& situation : situations) documents.push_back(situation->Good());
    ExpectInitialized(documents);
    for (std::size_t index = 0; index < situations.size(); ++index)
        EXPECT_EQ(situations[index]->folder.Read("good/taken"), "yes") << "situation " << index;
}

// Names under which no file is laid down, as they are written in a document.
Texts NamesThatAreRefused(std::string const& outside) {
    return {"", ".", "..", "/", "a/b", "a/", "/a", "./a", "../a", "../outside/kept", outside + "/kept",
            "a&#x2F;b", "..&#x2f;a", "a&#x0;b", "&#x0;", "..&#x0;",
            // ".." and "../a" in more bytes than they need.
            "&#xc0;&#xae;&#xc0;&#xae;", "&#xc0;&#xae;&#xc0;&#xae;&#xc0;&#xaf;a",
            // No text.
            "a&#xff;",
            // Nothing that the plain locale can spell.
            "\xc3\xa4", std::string(256, 'n')};
}

// Lets this process, and the program that it becomes, end at the first attempt to delete anything.
void DieOfDeleting() {
    constexpr auto numberOfCall = static_cast<unsigned int>(offsetof(seccomp_data, nr));
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, numberOfCall),
// The thread sanitizer's own start deletes a file by its path.
#if defined(SYS_unlink) && !defined(__SANITIZE_THREAD__)
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_unlink, 3, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rmdir, 2, 0),
#endif
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_unlinkat, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        _exit(1);
}

constexpr rlim_t cFileLimit = 50000;

// No file may become longer, and the attempt is an error and no signal.
void LimitFiles() {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit const limit{cFileLimit, cFileLimit};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(1);
}

} // namespace

TEST(ProgramWithSupportFiles, LaysDownFiveHundredOfOneFrame) {
    TemporaryFolder const folder(QuickFolder());
    auto const session = StartedAndReady();
    std::string files;
    for (unsigned int index = 0; index < 500; ++index)
        files += SupportFile("file" + std::to_string(index), Bytes(2900, index));
    ExpectInitialized(*session, Padded(InitializationOf(folder.Path("new/base"), files), cLargestFrame));
    for (unsigned int index = 0; index < 500; ++index)
        EXPECT_EQ(folder.Read("new/base/file" + std::to_string(index)), Bytes(2900, index)) << index;
    EXPECT_EQ(Listing(folder.Path("new/base")).size(), 500u);
}

TEST(ProgramWithSupportFiles, LaysDownOneThatFillsAFrameInOneLineOrInMany) {
    TemporaryFolder const folder;
    std::string const bytes = Bytes(1450000, 1);
    std::string const text = Base64(bytes);
    Texts const contents{text, InLines(text, 76, "\r\n"), InLines(text, 61, "\n\t ")};
    std::vector<std::unique_ptr<ClientSession>> sessions;
    std::vector<InitializingDocument> documents;
    for (std::size_t index = 0; index < contents.size(); ++index) {
        sessions.push_back(StartedAndReady());
        std::string const file = SupportFileWith("file", contents[index]);
        std::string const document = InitializationOf(folder.Path(std::to_string(index)), file);
        ASSERT_LE(document.size(), cLargestFrame);
        documents.push_back({sessions.back().get(), Padded(document, cLargestFrame)});
    }
    ExpectInitialized(documents);
    for (std::size_t index = 0; index < contents.size(); ++index)
        EXPECT_TRUE(folder.Read(std::to_string(index) + "/file") == bytes) << index;
}

TEST(ProgramWithSupportFiles, TakesFromAContentWhatIsBase64) {
    struct Case {
        char const* content;
        std::string bytes;
    };
    Case const cases[] = {
        {"", ""},
        {"QUJD", "ABC"},
        {"QUI=", "AB"},
        {"QUI", "AB"},
        {"QQ==", "A"},
        {"QQ", "A"},
        {"Q", ""},
        {"====", ""},
        {"+/+/", "\xfb\xff\xbf"},
        {"AAAA", std::string(3, '\0')},
        {"Q\nU\nJ\nD", "ABC"},
        {"QUJD\r\nREVG\r\n", "ABCDEF"},
        {"QU\rJD\r\rRE\n\rVG", "ABCDEF"},
        {"\n\nQUJD\n\n", "ABC"},
        {"  Q U\tJ D ", "ABC"},
        // A mark of the end in the middle is skipped like anything else that is no digit.
        {"QQ==QQ==", std::string("A\x04\x10", 3)},
        {"=Q=U=J=D=", "ABC"},
        {"-Q_U!J$D%", "ABC"},
        {"Q\xc3\xa4U\xffJ\x01"
         "D",
         "ABC"},
        {"garbage?!", "\x81\xaa\xdb\x6a\x07"},
        {"&#x51;U&lt;J&amp;D", "ABC"},
        {"Q&#x0;UJD", "ABC"},
        {"<![CDATA[QUJD]]>", "ABC"},
    };
    TemporaryFolder const folder;
    auto const session = StartedAndReady();
    std::string files;
    for (std::size_t index = 0; index < std::size(cases); ++index)
        files += SupportFileWith(std::to_string(index), cases[index].content);
    ExpectInitialized(*session, InitializationOf(folder.Path("base"), files));
    for (std::size_t index = 0; index < std::size(cases); ++index) {
        EXPECT_TRUE(folder.Has("base/" + std::to_string(index)));
        EXPECT_EQ(folder.Read("base/" + std::to_string(index)), cases[index].bytes) << cases[index].content;
    }
}

TEST(ProgramWithSupportFiles, NamesThemAsTheyAreAndPutsThemDirectlyThere) {
    Situation const here;
    auto const inSubFolder = [](char const* name, char const* subFolder) {
        return SupportFileWith(name, "QQ", "<SubFolder>" + std::string(subFolder) + "</SubFolder>");
    };
    std::string const files =
        SupportFile("readme.txt", "small") + SupportFile("README.TXT", "capitals") +
        inSubFolder("in a sub-folder", "sub/folder") + inSubFolder("outside", "../outside") +
        inSubFolder("elsewhere", "/tmp") + SupportFile("twice", "the first, and longer") +
        SupportFile("twice", "the second") + SupportFile(".hidden", "h") + SupportFile("...", "dots") +
        SupportFile("..a", "more dots") + SupportFile(" a &amp; b\\c ", "blanks") +
        SupportFile(std::string(255, 'n'), "long");
    ExpectInitialized(*here.session, InitializationOf(here.folder.Path("base"), files));
    EXPECT_EQ(Listing(here.folder.Path()),
              (Texts{"base/", "base/ a & b\\c : blanks", "base/...: dots", "base/..a: more dots",
                     "base/.hidden: h", "base/README.TXT: capitals", "base/elsewhere: A",
                     "base/in a sub-folder: A", "base/" + std::string(255, 'n') + ": long", "base/outside: A",
                     "base/readme.txt: small", "base/twice: the second", "outside/", "outside/kept: x"}));
}

TEST(ProgramWithSupportFiles, RefusesAMessageWithANameThatLeadsElsewhere) {
    Situations situations;
    for (std::size_t index = 0; index <= NamesThatAreRefused("").size(); ++index) {
        situations.push_back(std::make_unique<Situation>());
        TemporaryFolder const& folder = situations.back()->folder;
        folder.MakeFolder("base");
        folder.Write("base/old", "x");
        Texts const names = NamesThatAreRefused(folder.Path("outside"));
        // The last situation is that of a file without any name.
        std::string const bad = index < names.size()
                                    ? SupportFile(names[index], "bad")
                                    : std::string("<SupportFiles><Content>QQ</Content></SupportFiles>");
        situations.back()->Send(SupportFile("before", "1") + bad + SupportFile("behind", "2"));
    }
    ExpectRefused(situations);
    for (std::size_t index = 0; index < situations.size(); ++index)
        EXPECT_EQ(
            Listing(situations[index]->folder.Path()),
            (Texts{"base/", "base/before: 1", "good/", "good/taken: yes", "outside/", "outside/kept: x"}))
            << "name " << index;
}

TEST(ProgramWithSupportFiles, EmptiesTheDirectoryAgainForTheNextMessage) {
    Situation const here;
    here.folder.MakeFolder("base");
    here.folder.MakeFolder("base/sub");
    here.folder.Write("base/sub/old", "x");
    here.folder.MakeLink("../outside", "base/link");
    here.folder.MakeLink("../outside/kept", "base/file link");
    here.Send(SupportFile("one", "1") + SupportFile("two", "2") + SupportFile("..", "bad"));
    ASSERT_TRUE(WaitFor([&] { return here.folder.Has("base/two"); }));
    EXPECT_EQ(Listing(here.folder.Path()),
              (Texts{"base/", "base/one: 1", "base/two: 2", "outside/", "outside/kept: x"}));
    ExpectInitialized(*here.session, InitializationOf(here.folder.Path("base"), ""));
    EXPECT_EQ(Listing(here.folder.Path()), (Texts{"base/", "outside/", "outside/kept: x"}));
}

TEST(ProgramWithSupportFiles, TouchesNothingForAMessageWithASettingThatIsNone) {
    Situations situations;
    for (char const* const setting : {"<TrayMode>x</TrayMode>", "<RemindTime>soon</RemindTime>"}) {
        situations.push_back(std::make_unique<Situation>());
        situations.back()->folder.MakeFolder("base");
        situations.back()->folder.Write("base/old", "x");
        situations.back()->Send(SupportFile("new", "1"), setting);
    }
    ExpectRefused(situations);
    for (auto const& situation : situations)
        EXPECT_EQ(Listing(situation->folder.Path()),
                  (Texts{"base/", "base/old: x", "good/", "good/taken: yes", "outside/", "outside/kept: x"}));
}

TEST(ProgramWithSupportFiles, RefusesADirectoryThatIsNotItsOwnAndDeletesNothing) {
    using Folder = TemporaryFolder const&;
    constexpr uid_t somebodyElse = 4711;
    struct Case {
        // Makes what is needed, and gives the path as a document has it.
        std::function<std::string(Folder)> arrange;
        bool needsTheSuperuser = false;
    };
    auto const theirs = [](Folder folder) {
        folder.MakeFolder("theirs");
        folder.Write("theirs/kept", "x");
        return chown(folder.Path("theirs").c_str(), somebodyElse, somebodyElse) == 0 ? folder.Path("theirs")
                                                                                     : std::string("/");
    };
    std::vector<Case> const cases{
        {[](Folder) { return std::string("/"); }},
        {[](Folder) { return std::string("//"); }},
        {[](Folder) { return std::string("/."); }},
        {[](Folder) { return std::string("/tmp/.."); }},
        {[](Folder folder) {
            folder.MakeLink("/", "root");
            return folder.Path("root");
        }},
        {[](Folder folder) {
            folder.MakeLink("/", "root");
            return folder.Path("root/");
        }},
        {[](Folder) { return std::string(); }},
        {[](Folder folder) { return folder.Path("outside&#x0;/base"); }},
        {[](Folder folder) { return folder.Path("outside/&#xc0;&#xae;&#xc0;&#xae;"); }},
        {[](Folder folder) { return folder.Path("outside/kept"); }},
        {[](Folder folder) { return folder.Path("outside/kept/base"); }},
        {[](Folder folder) {
            folder.MakeLink("nowhere", "dangling");
            return folder.Path("dangling");
        }},
        {[](Folder folder) { return folder.Path("new/" + std::string(256, 'x')); }},
        {[](Folder folder) {
            std::string path = folder.Path();
            while (path.size() < 1000000) path += "/a";
            return path;
        }},
        {theirs, true},
        {[theirs](Folder folder) {
             theirs(folder);
             folder.MakeLink("theirs", "our link");
             return folder.Path("our link");
         },
         true},
        {[](Folder folder) {
             folder.MakeLink("outside", "their link");
             std::string const link = folder.Path("their link");
             return lchown(link.c_str(), somebodyElse, somebodyElse) == 0 ? link : std::string("/");
         },
         true},
    };
    Situations situations;
    std::vector<Texts> expected;
    for (Case const& each : cases) {
        if (each.needsTheSuperuser && geteuid() != 0) continue;
        situations.push_back(std::make_unique<Situation>(DieOfDeleting));
        Situation const& here = *situations.back();
        std::string const base = each.arrange(here.folder);
        expected.push_back(Listing(here.folder.Path()));
        here.session->SendDocument(InitializationOf(base, SupportFile("vrk-test-stray", "1")));
    }
    ExpectRefused(situations);
    for (std::size_t index = 0; index < situations.size(); ++index) {
        expected[index].insert(expected[index].end(), {"good/", "good/taken: yes"});
        std::sort(expected[index].begin(), expected[index].end());
        EXPECT_EQ(Listing(situations[index]->folder.Path()), expected[index]) << "directory " << index;
    }
}

// What the test above stands on.
TEST(ProgramWithSupportFiles, DiesInATestThatLetsItDeleteNothing) {
    Situation const here(DieOfDeleting);
    here.folder.MakeFolder("base");
    here.folder.Write("base/old", "x");
    here.Send("");
    std::optional<int> const status = here.session->WaitForEnd();
    ASSERT_TRUE(status);
    ASSERT_TRUE(WIFSIGNALED(*status));
    EXPECT_EQ(WTERMSIG(*status), SIGSYS);
}

TEST(ProgramWithSupportFiles, RefusesAMessageWhoseFileWouldBeTooLong) {
    Situations situations;
    situations.push_back(std::make_unique<Situation>(LimitFiles));
    std::string const bytes = Bytes(cFileLimit + 1, 0);
    situations.back()->Send(SupportFile("before", bytes.substr(1)) + SupportFile("long", bytes) +
                            SupportFile("behind", "2"));
    ExpectRefused(situations);
    TemporaryFolder const& folder = situations.back()->folder;
    EXPECT_EQ(Listing(folder.Path()),
              (Texts{"base/", "base/before: " + bytes.substr(1), "base/long: " + bytes.substr(0, cFileLimit),
                     "good/", "good/taken: yes", "outside/", "outside/kept: x"}));
}

TEST(ProgramWithSupportFiles, RefusesAMessageForADirectoryThatItMayNotWrite) {
    constexpr mode_t readOnly = 0555;
    Situation const empty(ObeyPermissions);
    empty.folder.MakeFolder("base");
    ModeScope const emptyMode(empty.folder.Path("base"), readOnly);
    Situation const full(ObeyPermissions);
    full.folder.MakeFolder("base");
    full.folder.Write("base/old", "x");
    ModeScope const fullMode(full.folder.Path("base"), readOnly);
    Situation const above(ObeyPermissions);
    ModeScope const aboveMode(above.folder.Path("outside"), readOnly);

    empty.Send(SupportFile("new", "1"));
    full.Send("");
    above.session->SendDocument(InitializationOf(above.folder.Path("outside/base"), ""));
    ExpectInitialized({empty.Good(), full.Good(), above.Good()});
    EXPECT_EQ(Listing(empty.folder.Path()),
              (Texts{"base/", "good/", "good/taken: yes", "outside/", "outside/kept: x"}));
    EXPECT_EQ(Listing(full.folder.Path()),
              (Texts{"base/", "base/old: x", "good/", "good/taken: yes", "outside/", "outside/kept: x"}));
    EXPECT_EQ(Listing(above.folder.Path()),
              (Texts{"good/", "good/taken: yes", "outside/", "outside/kept: x"}));
}

// The program sees a small file system of its own in the place of its directory.
TEST(ProgramWithSupportFiles, FindsRoomAgainOnAFullFileSystem) {
    TemporaryFolder const folder;
    std::string const base = folder.Path("base");
    folder.MakeFolder("base");
    auto const mountSmall = [&] { return MountMemoryForThisProcess(base, 0, "size=64k"); };
    if (InChild([&] { return std::string(mountSmall() ? "" : cNotAllowed); }) == cNotAllowed)
        GTEST_SKIP() << "no file systems can be mounted here";
    auto const session = StartedAndReady([&] {
        if (!mountSmall()) _exit(1);
    });
    std::string const seen = "/proc/" + std::to_string(session->ProcessID()) + "/root" + base;
    std::string const bytes = Bytes(100000, 0);
    session->SendDocument(InitializationOf(base, SupportFile("before", "1") + SupportFile("large", bytes)));
    ASSERT_TRUE(WaitFor([&] { return FileContents(seen + "/large").size() > 50000; }));
    session->SendDocument(InitializationOf(base, SupportFile("small", bytes.substr(0, 60000))));
    EXPECT_TRUE(WaitFor([&] { return FileContents(seen + "/small") == bytes.substr(0, 60000); }));
    EXPECT_EQ(session->WaitForExitStatus(), 255);
    EXPECT_TRUE(std::filesystem::is_empty(base)) << "it was the mount that was written to";
}

TEST(ProgramWithSupportFiles, RefusesAMessageForAReadOnlyFileSystem) {
    auto const here = std::make_shared<TemporaryFolder>();
    here->MakeFolder("base");
    auto const mountReadOnly = [here] { return MountMemoryForThisProcess(here->Path("base"), MS_RDONLY); };
    if (InChild([&] { return std::string(mountReadOnly() ? "" : cNotAllowed); }) == cNotAllowed)
        GTEST_SKIP() << "no file systems can be mounted here";
    auto const session = StartedAndReady([&] {
        if (!mountReadOnly()) _exit(1);
    });
    session->SendDocument(InitializationOf(here->Path("base"), SupportFile("new", "1")));
    session->SendDocument(InitializationOf(here->Path("base/sub"), ""));
    ExpectInitialized(*session, InitializationOf(here->Path("good"), SupportFile("taken", "yes")));
    EXPECT_EQ(Listing(here->Path()), (Texts{"base/", "good/", "good/taken: yes"}));
}
