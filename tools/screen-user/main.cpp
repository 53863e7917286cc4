#include "tools/screen-user/Picture.h"
#include "tools/screen-user/User.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace {

enum class Status { Done = 0, NotDone = 1, BadCommandLine = 2 };

struct CommandLine {
    std::string display;
    double patience = 10;
    std::string title;
    std::string widget;
    std::string resource;
    std::string file;
    std::string text;
    unsigned button = 1;
    std::size_t row = 0;
    bool frame = false;
};

ScreenUser::User MakeUser(CommandLine const& line) {
    return ScreenUser::User(line.display,
                            std::chrono::milliseconds(static_cast<std::int64_t>(line.patience * 1000)));
}

void Wait(CommandLine const& line) {
    MakeUser(line).WaitForWindow(line.title);
}

void WaitUntilGone(CommandLine const& line) {
    MakeUser(line).WaitUntilGone(line.title);
}

void PrintTree(CommandLine const& line) {
    ScreenUser::User user = MakeUser(line);
    std::cout << Describe(user.Widgets(user.WaitForWindow(line.title)));
}

void PrintValue(CommandLine const& line) {
    ScreenUser::User user = MakeUser(line);
    ScreenUser::Widget const widget = user.Find(user.WaitForWindow(line.title), line.widget);
    auto const value = user.Value(widget, line.resource);
    if (!value)
        throw ScreenUser::UserError("The widget \"" + line.widget + "\" tells nothing as its \"" +
                                    line.resource + "\".");
    std::cout << *value << '\n';
}

void Click(CommandLine const& line) {
    ScreenUser::User user = MakeUser(line);
    user.Click(user.Find(user.WaitForWindow(line.title), line.widget), line.button);
}

void ClickRow(CommandLine const& line) {
    ScreenUser::User user = MakeUser(line);
    user.ClickRow(user.Find(user.WaitForWindow(line.title), line.widget), line.row);
}

void Type(CommandLine const& line) {
    MakeUser(line).Type(line.text);
}

void Close(CommandLine const& line) {
    MakeUser(line).CloseWindow(line.title);
}

void Picture(CommandLine const& line) {
    ScreenUser::WindowID const window =
        line.title.empty() ? ScreenUser::cNoWindow : MakeUser(line).WaitForWindow(line.title);
    ScreenUser::TakePicture(line.display, line.file, window,
                            line.frame ? ScreenUser::WindowFrame::Included
                                       : ScreenUser::WindowFrame::LeftOut);
}

class Commands {
public:
    Commands(CLI::App& app, CommandLine& line) : m_app(app), m_line(line) {}

    CLI::App* Add(char const* name, char const* purpose, void (*action)(CommandLine const&)) {
        CLI::App* const command = m_app.add_subcommand(name, purpose);
        command->callback([action, this] { action(m_line); });
        return command;
    }
    CLI::App* AddForWindow(char const* name, char const* purpose, void (*action)(CommandLine const&)) {
        CLI::App* const command = Add(name, purpose, action);
        command->add_option("title", m_line.title, "The window's title")->required();
        return command;
    }
    CLI::App* AddForWidget(char const* name, char const* purpose, void (*action)(CommandLine const&)) {
        CLI::App* const command = AddForWindow(name, purpose, action);
        command
            ->add_option("widget", m_line.widget,
                         "The names on the way to the widget, such as form.viewport.vertical")
            ->required();
        return command;
    }

private:
    CLI::App& m_app;
    CommandLine& m_line;
};

void DescribeOptions(CLI::App& app, CommandLine& line) {
    app.add_option("-d,--display", line.display,
                   "The display, such as :3; that of the environment if not given");
    app.add_option("-p,--patience", line.patience, "How many seconds to wait for what is not there yet")
        ->capture_default_str()
        ->check(CLI::Range(0.0, 86400.0));
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(
        "Exit status: 0 done, 1 not possible, 2 wrong command line.\nMore of it in docs/screen-user.md.");
}

void DescribeCommands(Commands& commands, CommandLine& line) {
    commands.AddForWindow("wait", "Waits until the window is on the screen", Wait);
    commands.AddForWindow("gone", "Waits until the window is not on the screen", WaitUntilGone);
    commands.AddForWindow("tree", "Prints the window's widgets", PrintTree);
    commands.AddForWidget("value", "Prints a resource of a widget", PrintValue)
        ->add_option("resource", line.resource, "Its name, such as label or sensitive")
        ->required();
    commands.AddForWidget("click", "Clicks a widget in its middle", Click)
        ->add_option("-b,--button", line.button, "The pointer's button")
        ->capture_default_str()
        ->check(CLI::Range(1, 5));
    commands.AddForWidget("row", "Clicks a row of a list, scrolling to it where needed", ClickRow)
        ->add_option("row", line.row, "Its number, counted from 0")
        ->required();
    commands.Add("type", "Types a text of ASCII characters", Type)
        ->add_option("text", line.text, "What to type")
        ->required();
    commands.AddForWindow("close", "Asks the window to close, as its close box does", Close);
    CLI::App* const picture = commands.Add("picture", "Keeps a picture of the screen", Picture);
    picture->add_option("file", line.file, "Where; the ending tells the form, such as .png")->required();
    CLI::Option* const window =
        picture->add_option("-w,--window", line.title, "The title of a window, for a picture of that alone");
    picture->add_flag("-f,--frame", line.frame, "With the frame that the window manager puts around it")
        ->needs(window);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app(
        "Sees and presses the windows of programs with Athena widgets, as a user at the screen does.",
        "screen-user");
    CommandLine line;
    DescribeOptions(app, line);
    Commands commands(app, line);
    DescribeCommands(commands, line);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return static_cast<int>(app.exit(error) == 0 ? Status::Done : Status::BadCommandLine);
    } catch (ScreenUser::UserError const& error) {
        std::cerr << "screen-user: " << error.what() << std::endl;
        return static_cast<int>(Status::NotDone);
    }
    return static_cast<int>(Status::Done);
}
