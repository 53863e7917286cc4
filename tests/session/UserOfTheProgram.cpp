#include "tests/session/UserOfTheProgram.h"

#include "tests/session/Documents.h"
#include "tests/support/ExpectedDocuments.h"
#include "tools/screen-user/Windows.h"

using std::chrono::milliseconds;

std::string Element(std::string const& name, std::string const& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

std::string Action(unsigned long id, std::string const& fields) {
    return Element("ActionRequest", Element("ID", std::to_string(id)) +
                                        Element("Title", "Action " + std::to_string(id)) +
                                        Element("Cancellable", "true") + fields);
}

std::string AskingAction(unsigned long id) {
    return Action(id, Element("PreActionMessage", "Take " + std::to_string(id) + "?"));
}

std::string OverdueAction(unsigned long id) {
    return Action(id, Element("ForceRun", "true") + Element("Deadline", TimeFromNow(-60)));
}

std::string Message(unsigned long id, std::string const& title, std::string const& fields) {
    return Element("MessageRequest", Element("ID", std::to_string(id)) + Element("Title", title) + fields);
}

std::string CompletionMessage(unsigned long id, std::string const& actionTitle) {
    return Message(id, actionTitle, Element("IsCompletionMessage", "true"));
}

std::string Withdrawal(std::string const& type, unsigned long id) {
    return Element("RemoveRequest", Element("RemoveType", type) + Element("ID", std::to_string(id)));
}

std::string QuietPeriodStart(std::string const& start, std::string const& end) {
    return Element("QuietModeStart", Element("StartTime", start) + Element("EndTime", end));
}

std::string QuietPeriodEnd() {
    return Element("QuietModeEnd", "");
}

std::unique_ptr<ClientSession>
UserOfTheProgram::Launched(std::string const& locale, std::map<std::string, std::string> const& environment,
                           std::function<void()> prepare) {
    ClientSession::Options options;
    options.display = m_server.Name();
    options.environment = environment;
    options.environment["LC_ALL"] = locale;
    options.fixedAddresses = true;
    options.prepare = std::move(prepare);
    auto session = std::make_unique<ClientSession>(options);
    EXPECT_EQ(session->ReadDocument(), cReadyForData);
    return session;
}

void UserOfTheProgram::Start(std::string const& locale, std::string const& settings,
                             std::map<std::string, std::string> const& environment) {
    m_session = Launched(locale, environment);
    m_session->SendDocument(Initialization(Element("RemindInterval", "PT5M") + settings));
}

void UserOfTheProgram::Send(std::string const& children) {
    m_session->SendDocument(Element("ClientToUI", children));
}

void UserOfTheProgram::StartWith(std::string const& children) {
    Start();
    Send(children);
    Shell();
}

bool UserOfTheProgram::IsInFront(ScreenUser::WindowID window) {
    ScreenUser::Connection connection(m_server.Name());
    ScreenUser::Area const area = m_user.AreaOf(window).value_or(ScreenUser::Area());
    return ScreenUser::IsOnTopAt(connection, window, {area.x + area.width / 2, area.y + area.height / 2});
}

void UserOfTheProgram::WaitUntilClosed(ScreenUser::WindowID window) {
    EXPECT_TRUE(WaitFor([&] { return !m_user.IsViewable(window); })) << "a window stays on the screen";
}

ScreenUser::Widget UserOfTheProgram::Part(std::string const& path, std::string const& title) {
    return m_user.Find(Shell(title), path);
}

void UserOfTheProgram::Click(std::string const& path, std::string const& title) {
    m_user.Click(Part(path, title));
}

void UserOfTheProgram::CloseBy(std::string const& path, std::string const& title) {
    ScreenUser::WindowID const window = Shell(title);
    m_user.Click(m_user.Find(window, path));
    WaitUntilClosed(window);
}

void UserOfTheProgram::ExpectText(std::string const& title, std::string const& path,
                                  std::string const& resource, std::string const& expected) {
    ScreenUser::Widget const widget = Part(path, title);
    if (m_user.TellsValues(widget)) {
        EXPECT_EQ(m_user.Value(widget, resource), expected);
    }
}

Texts UserOfTheProgram::Heard(std::size_t count) {
    Texts documents;
    for (std::size_t index = 0; index < count; ++index)
        documents.push_back(m_session->ReadDocument().value_or("nothing"));
    return documents;
}

std::string UserOfTheProgram::HeardAfterClicks(std::string const& path) {
    for (int click = 0; click < 20; ++click) {
        Click(path);
        if (std::optional<std::string> const document = m_session->ReadDocument(milliseconds(1500)))
            return *document;
    }
    return "nothing";
}

void UserOfTheProgram::ExpectSilence() {
    EXPECT_EQ(m_session->ReadDocument(milliseconds(2500)), std::nullopt);
}

void UserOfTheProgram::LetATickPass() {
    unsigned long const mark = m_nextMark++;
    Send(OverdueAction(mark));
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(mark)}));
}

// An answer about widgets comes behind everything that the pointer has done before.
void UserOfTheProgram::LetATickPassAfterClick() {
    m_user.Widgets(Shell());
    LetATickPass();
}
