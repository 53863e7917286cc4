#include "tools/screen-user/User.h"

#include "tests/session/PrivateDisplay.h"
#include "tests/session/WindowManager.h"
#include "tests/tools/SampleProcess.h"
#include "tools/screen-user/Picture.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <memory>
#include <unistd.h>

using namespace ScreenUser;
using std::chrono::milliseconds;
using testing::HasSubstr;

namespace {

constexpr milliseconds cShort{300};

// What the function complains of; empty when it does not.
template <class Function>
std::string Complaint(Function function) {
    try {
        function();
    } catch (UserError const& error) {
        return error.what();
    }
    return "";
}

// Width and height as they stand in the head of a PNG file; zero for another file.
std::pair<int, int> PictureSize(std::filesystem::path const& file) {
    std::string head(24, '\0');
    std::ifstream(file, std::ios::binary).read(head.data(), 24);
    if (!head.starts_with("\x89PNG")) return {0, 0};
    auto const number = [&](std::size_t at) {
        return static_cast<unsigned char>(head[at + 2]) * 256 + static_cast<unsigned char>(head[at + 3]);
    };
    return {number(16), number(20)};
}

} // namespace

// Each on a display with and without a window manager.
class UserAtTheScreen : public testing::TestWithParam<bool> {
protected:
    UserAtTheScreen() {
        if (GetParam()) m_manager = std::make_unique<WindowManager>(m_display.Name());
    }

    // The sample window on the screen. Where the machine does not fix addresses, it is started anew until its
    // widgets tell values.
    WindowID Start(std::vector<std::string> const& words = {}) {
        std::vector<std::string> arguments{"A sample"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        for (int attempt = 0; attempt < 40; ++attempt) {
            m_sample = std::make_unique<SampleProcess>(m_display.Name(), arguments);
            WindowID const window = m_user.WaitForWindow("A sample");
            if (m_user.TellsValues(m_user.Find(window, "form.first"))) return window;
            m_sample.reset();
            m_user.WaitUntilGone("A sample");
        }
        throw UserError("The sample's widgets never tell values.");
    }

    PrivateDisplay m_display;
    std::unique_ptr<WindowManager> m_manager;
    User m_user{m_display.Name()};
    User m_hasty{m_display.Name(), cShort};
    std::unique_ptr<SampleProcess> m_sample;
};

INSTANTIATE_TEST_SUITE_P(Display, UserAtTheScreen, testing::Bool(),
                         [](auto const& given) { return given.param ? "WithManager" : "WithoutManager"; });

TEST_P(UserAtTheScreen, SeesTheTitleOfAWindow) {
    WindowID const window = Start();
    EXPECT_EQ(m_user.Title(window), "A sample");
    EXPECT_EQ(m_user.FindWindows("A sample"), std::vector<WindowID>{window});
    EXPECT_EQ(m_user.FindWindow("A sampl"), std::nullopt);
}

TEST_P(UserAtTheScreen, ReadsATitleOfOtherLettersInUTF8) {
    SampleProcess const sample(m_display.Name(), {"M\xfcller"});
    EXPECT_NE(m_user.WaitForWindow("M\xc3\xbcller"), cNoWindow);
}

TEST_P(UserAtTheScreen, SaysWhichWindowsThereAreWhenOneIsMissing) {
    Start();
    EXPECT_EQ(Complaint([&] { m_hasty.WaitForWindow("Another"); }),
              "No window \"Another\" came onto the screen; there is \"A sample\".");
    EXPECT_EQ(Complaint([&] { m_hasty.WaitUntilGone("A sample"); }),
              "The window \"A sample\" stays on the screen.");
}

TEST_P(UserAtTheScreen, SeesTheWidgetsByNameAndClass) {
    WidgetTree const tree = m_user.Widgets(Start());
    ASSERT_FALSE(tree.empty());
    EXPECT_EQ(tree[0].className, "ApplicationShell");
    EXPECT_EQ(FindByPath(tree, "")->className, "ApplicationShell");
    EXPECT_EQ(FindByPath(tree, "form")->className, "Form");
    EXPECT_EQ(FindByPath(tree, "form.first")->className, "Command");
    EXPECT_EQ(FindByPath(tree, "form.many.vertical")->className, "Scrollbar");
    EXPECT_EQ(FindByPath(tree, "form.many.")->className, "List");
    EXPECT_EQ(FindByPath(tree, "form.third"), nullptr);
    EXPECT_EQ(FindByClass(tree, "List").size(), 4u);
}

TEST_P(UserAtTheScreen, SeesWhereWidgetsAre) {
    WindowID const window = Start();
    Widget const shell = m_user.Find(window, "");
    Widget const greeting = m_user.Find(window, "form.greeting");
    EXPECT_EQ(greeting.area.width, 300);
    EXPECT_EQ(greeting.borderWidth, 0);
    EXPECT_EQ(greeting.area.x, shell.area.x + 4);
    EXPECT_EQ(greeting.area.y, shell.area.y + 4);
    EXPECT_EQ(m_user.Find(window, "form.first").borderWidth, 1);
    EXPECT_TRUE(m_user.Find(window, "form.first").mapped);
    EXPECT_FALSE(m_user.Find(window, "form.hidden").mapped);
}

TEST_P(UserAtTheScreen, ReadsValuesOfAllReadableKinds) {
    WindowID const window = Start();
    Widget const first = m_user.Find(window, "form.first");
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.greeting"), "label"), "Hello");
    EXPECT_EQ(m_user.Value(m_user.Find(window, ""), "title"), "A sample");
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.pane.textSource"), "string"),
              "What the pane shows\nin two lines");
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.greeting"), "width"), "300");
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.hidden"), "mappedWhenManaged"), "false");
    EXPECT_EQ(m_user.Value(first, "justify"), "center");
    EXPECT_EQ(m_user.Value(first, "fromVert"), "greeting");
    EXPECT_EQ(m_user.Value(first, "horizDistance"), "4");
    EXPECT_EQ(m_user.RowsOf(m_user.Find(window, "form.many.")), 30u);
    EXPECT_EQ(m_user.RowsOf(m_user.Find(window, "form.none.")), 1u);
}

TEST_P(UserAtTheScreen, ReadsNoValueWhereThereIsNone) {
    WindowID const window = Start();
    Widget const first = m_user.Find(window, "form.first");
    EXPECT_EQ(m_user.Value(first, "string"), std::nullopt) << "it has none";
    EXPECT_EQ(m_user.Value(first, "callback"), std::nullopt) << "no text could tell it";
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.greeting"), "fromVert"), std::nullopt) << "it is null";
}

TEST_P(UserAtTheScreen, TellsASensitiveWidgetFromOneThatIsNot) {
    WindowID const window = Start();
    EXPECT_TRUE(m_user.IsSensitive(m_user.Find(window, "form.first")));
    EXPECT_FALSE(m_user.IsSensitive(m_user.Find(window, "form.insensitive")));
}

TEST_P(UserAtTheScreen, PressesACommandByOneClick) {
    WindowID const window = Start();
    m_user.Click(m_user.Find(window, "form.second"));
    EXPECT_EQ(m_sample->ReadLine(), "second");
    m_user.Click(m_user.Find(window, "form.first"), Point{1, 1});
    EXPECT_EQ(m_sample->ReadLine(), "first");
    m_user.Click(m_user.Find(window, "form.first"));
    m_user.Click(m_user.Find(window, "form.first"));
    EXPECT_EQ(m_sample->ReadLine(), "first");
    EXPECT_EQ(m_sample->ReadLine(), "first");
}

TEST_P(UserAtTheScreen, ClicksAnInsensitiveCommandInVain) {
    WindowID const window = Start();
    m_user.Click(m_user.Find(window, "form.insensitive"));
    m_user.Click(m_user.Find(window, "form.first"));
    EXPECT_EQ(m_sample->ReadLine(), "first");
}

TEST_P(UserAtTheScreen, ClicksNothingThatIsOutOfSight) {
    WindowID const window = Start();
    EXPECT_EQ(Complaint([&] { m_hasty.Click(m_user.Find(window, "form.hidden")); }),
              "The widget \"hidden\" of class Command is not in sight.");
    EXPECT_THAT(Complaint([&] {
                    m_hasty.Click(m_user.Find(window, "form.first"), Point{500, 1});
                }),
                HasSubstr("The widget \"first\" of class Command is not in sight at "));
    EXPECT_EQ(m_sample->ReadLine(cShort), std::nullopt);
}

TEST_P(UserAtTheScreen, ClicksNothingThatLiesUnderAnotherWindow) {
    WindowID const window = Start();
    m_user.Click(m_user.Find(window, "form.popupButton"));
    WindowID const popup = m_user.WaitForWindow("Popped up");
    Widget const greeting = m_user.Find(window, "form.greeting");
    bool const covered = m_user.AreaOf(popup).value().Contains({greeting.area.x + 1, greeting.area.y + 1});
    EXPECT_TRUE(covered || m_manager) << "without a window manager, both windows stand in the corner";
    EXPECT_THAT(Complaint([&] {
                    m_hasty.Click(greeting, Point{1, 1});
                }),
                HasSubstr(covered ? "Another window lies over the widget \"greeting\" at " : ""));
}

TEST_P(UserAtTheScreen, BringsAWindowInFront) {
    WindowID const window = Start();
    SampleProcess const other(m_display.Name(), {"Another"});
    WindowID const inFront = m_user.WaitForWindow("Another");
    m_user.Raise(inFront);
    m_user.Raise(window);
    m_user.Click(m_user.Find(window, "form.greeting"));
    m_user.Raise(inFront);
    m_user.Click(m_user.Find(inFront, "form.greeting"));
    EXPECT_EQ(Complaint([&] { m_hasty.Raise(cNoWindow); }), "The window \"\" does not come in front.");
}

TEST_P(UserAtTheScreen, SeesAndPressesWhatPopsUp) {
    WindowID const window = Start();
    m_user.Click(m_user.Find(window, "form.popupButton"));
    WindowID const popup = m_user.WaitForWindow("Popped up");
    WidgetTree const tree = m_user.Widgets(popup);
    EXPECT_EQ(tree[0].className, "TransientShell");
    EXPECT_EQ(tree[0].parent, std::nullopt);
    m_user.Click(m_user.Find(popup, "inner.innermost"));
    EXPECT_EQ(m_sample->ReadLine(), "innermost");
}

TEST_P(UserAtTheScreen, SelectsEveryRowOfAListThatScrolls) {
    Widget const list = m_user.Find(Start(), "form.many.");
    for (std::size_t const row : std::initializer_list<std::size_t>{0, 1, 29, 2, 15, 6, 28, 0}) {
        m_user.ClickRow(list, row);
        EXPECT_EQ(m_sample->ReadLine(), "row " + std::to_string(row));
    }
}

TEST_P(UserAtTheScreen, SelectsRowsOfAListWhoseBarIsDraggedByTheFirstButton) {
    Widget const list = m_user.Find(Start(), "form.overridden.");
    for (std::size_t const row : std::initializer_list<std::size_t>{17, 29, 0}) {
        m_user.ClickRow(list, row);
        EXPECT_EQ(m_sample->ReadLine(), "row " + std::to_string(row));
    }
}

TEST_P(UserAtTheScreen, SelectsRowsOfAListWithRoomToSpare) {
    Widget const list = m_user.Find(Start(), "form.few.");
    for (std::size_t const row : std::initializer_list<std::size_t>{2, 0, 1}) {
        m_user.ClickRow(list, row);
        EXPECT_EQ(m_sample->ReadLine(), "row " + std::to_string(row));
    }
}

TEST_P(UserAtTheScreen, SelectsRowsInFontSets) {
    WindowID const window = Start({"international"});
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.few."), "international"), "true");
    m_user.ClickRow(m_user.Find(window, "form.few."), 2);
    EXPECT_EQ(m_sample->ReadLine(), "row 2");
    m_user.ClickRow(m_user.Find(window, "form.many."), 23);
    EXPECT_EQ(m_sample->ReadLine(), "row 23");
}

TEST_P(UserAtTheScreen, RefusesARowThatTheListDoesNotHave) {
    WindowID const window = Start();
    EXPECT_EQ(Complaint([&] { m_user.ClickRow(m_user.Find(window, "form.few."), 3); }),
              "The list has no row 3; it has 3, counted from 0.");
    EXPECT_EQ(Complaint([&] { m_user.ClickRow(m_user.Find(window, "form.many."), 30); }),
              "The list has no row 30; it has 30, counted from 0.");
}

TEST_P(UserAtTheScreen, SelectsRowsAlsoWhereNoValuesAreTold) {
    SampleProcess* sample = nullptr;
    WindowID window = cNoWindow;
    Widget list;
    std::unique_ptr<SampleProcess> process;
    for (int attempt = 0; attempt < 40; ++attempt) {
        process =
            std::make_unique<SampleProcess>(m_display.Name(), std::vector<std::string>{"A sample"}, false);
        sample = process.get();
        window = m_user.WaitForWindow("A sample");
        list = m_user.Find(window, "form.many.");
        if (!m_user.TellsValues(list)) break;
        process.reset();
        m_user.WaitUntilGone("A sample");
    }
    if (!process) GTEST_SKIP() << "this machine puts all widgets where they tell values";
    m_user.ClickRow(list, 21);
    EXPECT_EQ(sample->ReadLine(), "row 21");
    m_user.ClickRow(m_user.Find(window, "form.few."), 2);
    EXPECT_EQ(sample->ReadLine(), "row 2");
    EXPECT_THAT(Complaint([&] { m_user.Value(list, "sensitive"); }),
                HasSubstr("tells no values in this run"));
}

TEST_P(UserAtTheScreen, DragsTheThumbOfABar) {
    WindowID const window = Start();
    Widget const list = m_user.Find(window, "form.overridden.");
    Area const bar = m_user.Find(window, "form.overridden.vertical").area;
    int const x = bar.x + bar.width / 2;
    m_user.Drag({x, bar.y}, {x, bar.y + bar.height - 1}, 1);
    Widget const moved = m_user.Again(list);
    EXPECT_EQ(moved.area.y + moved.area.height, bar.y + bar.height) << "its end is in sight";
}

TEST_P(UserAtTheScreen, TypesIntoAField) {
    WindowID const window = Start();
    m_user.Click(m_user.Find(window, "form.field"));
    m_user.Type("Hello, World! ~ 1+1");
    m_user.Press(0x78);
    EXPECT_EQ(m_user.Value(m_user.Find(window, "form.field.textSource"), "string"), "Hello, World! ~ 1+1x");
}

TEST_P(UserAtTheScreen, RefusesAKeyThatTheKeyboardDoesNotHave) {
    EXPECT_EQ(Complaint([&] { m_user.Press(0x12345678); }),
              "No key of this keyboard bears the symbol 0x12345678.");
}

TEST_P(UserAtTheScreen, RefusesPointsAndButtonsThatThereAreNot) {
    EXPECT_EQ(Complaint([&] { m_user.MoveTo({1024, 0}); }), "The point 1024,0 is not on the screen.");
    EXPECT_EQ(Complaint([&] { m_user.MoveTo({0, -1}); }), "The point 0,-1 is not on the screen.");
    EXPECT_EQ(Complaint([&] { m_user.ClickAt({1023, 767}, 6); }), "A pointer has the buttons 1 to 5.");
    EXPECT_EQ(Complaint([&] { m_user.ClickAt({1023, 767}, 0); }), "A pointer has the buttons 1 to 5.");
}

TEST_P(UserAtTheScreen, ClosesAWindowByItsCloseBox) {
    Start();
    m_user.CloseWindow("A sample");
    EXPECT_EQ(m_sample->ReadLine(), "closed");
    m_user.WaitUntilGone("A sample");
}

TEST_P(UserAtTheScreen, ClosesNoWindowWithoutACloseBox) {
    Start({"no-close-box"});
    EXPECT_EQ(Complaint([&] { m_user.CloseWindow("A sample"); }),
              "The window \"A sample\" does not let itself be closed by a message.");
}

TEST_P(UserAtTheScreen, SaysWhenAWidgetHasGone) {
    WindowID const window = Start();
    Widget const removed = m_user.Find(window, "form.remove");
    m_user.Click(removed);
    EXPECT_EQ(m_sample->ReadLine(), "removed");
    EXPECT_EQ(Complaint([&] { m_user.Again(removed); }), "The widget \"remove\" of class Command has gone.");
    EXPECT_EQ(Complaint([&] { m_hasty.Find(window, "form.remove"); }),
              "The window has no widget \"form.remove\".");
}

TEST_P(UserAtTheScreen, SaysWhenTheProgramHangs) {
    WindowID const window = Start();
    kill(m_sample->ProcessID(), SIGSTOP);
    EXPECT_THAT(Complaint([&] { m_hasty.Widgets(window); }), HasSubstr("does not answer about its widgets"));
    kill(m_sample->ProcessID(), SIGCONT);
    EXPECT_NE(m_user.Find(window, "form.first").window, cNoWindow) << "later questions get their own answers";
}

TEST_P(UserAtTheScreen, SaysWhenTheProgramHasEnded) {
    WindowID const window = Start();
    m_sample.reset();
    EXPECT_NE(Complaint([&] { m_hasty.Widgets(window); }), "");
    EXPECT_EQ(m_user.AreaOf(window), std::nullopt);
    EXPECT_FALSE(m_user.IsViewable(window));
}

TEST_P(UserAtTheScreen, SaysWhenTheDisplayDies) {
    WindowID const window = Start();
    m_display.Kill();
    EXPECT_EQ(Complaint([&] { m_user.Widgets(window); }), "The display has gone away.");
    EXPECT_EQ(Complaint([&] { m_user.WaitForWindow("A sample"); }), "The display has gone away.");
}

TEST_P(UserAtTheScreen, SharesTheDisplayWithOthers) {
    WindowID const window = Start();
    User other(m_display.Name());
    for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(other.Find(window, "form.first").identity, m_user.Find(window, "form.first").identity);
    }
}

TEST_P(UserAtTheScreen, TakesAPictureOfTheScreenOrOfOneWindow) {
    WindowID const window = Start();
    std::filesystem::path const file = std::filesystem::temp_directory_path() /
                                       ("picture" + std::to_string(getpid()) + m_display.Name() + ".png");
    TakePicture(m_display.Name(), file.string());
    EXPECT_EQ(PictureSize(file), std::pair(1024, 768));
    TakePicture(m_display.Name(), file.string(), window);
    Area const area = m_user.AreaOf(window).value();
    EXPECT_EQ(PictureSize(file), std::pair(area.width, area.height));
    std::filesystem::remove(file);
}

TEST(UserWithoutADisplay, SaysWhichDisplayCannotBeReached) {
    EXPECT_EQ(Complaint([] { User user(":987654"); }), "Cannot reach the display :987654.");
}

TEST(UserWithoutADisplay, SaysWhenAPictureCannotBeTaken) {
    PrivateDisplay const display;
    EXPECT_THAT(Complaint([&] { TakePicture(display.Name(), "/no/such/folder/picture.png"); }),
                HasSubstr("No picture was taken into /no/such/folder/picture.png"));
}
