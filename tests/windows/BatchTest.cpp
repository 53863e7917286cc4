#include "tests/windows/DialogTest.h"

#include "dialogs/ActionRequestDialog.h"

#include <X11/StringDefs.h>
#include <random>

// Random changes to the pending actions, once with a refresh after each and once with one refresh for all:
// what the dialog shows afterwards must be the same.

namespace {

struct Change {
    enum Kind { Arrives, Leaves, AllLeave, Disables, Enables } kind;
    Pending action;
};

using Changes = std::vector<Change>;

// Few titles, so that equal rows come and go; deadlines that are far, near and past.
class RandomChanges {
public:
    explicit RandomChanges(unsigned int seed) : m_generator(seed) {}

    int Draw(int limit) { return static_cast<int>(m_generator() % static_cast<unsigned int>(limit)); }

    Changes Make(int most, bool arrivalsOnly) {
        Changes changes;
        int const count = Draw(most) + 1;
        for (int number = 0; number < count; ++number) {
            changes.push_back({arrivalsOnly ? Change::Arrives : Kind(), Action()});
        }
        return changes;
    }

private:
    Change::Kind Kind() {
        int const kind = Draw(14);
        if (kind < 6) return Change::Arrives;
        if (kind < 10) return Change::Leaves;
        if (kind == 10) return Change::AllLeave;
        return kind < 13 ? Change::Disables : Change::Enables;
    }

    Pending Action() {
        static char const* const titles[] = {"A", "B", "C", ""};
        Pending action;
        action.id = static_cast<unsigned long>(Draw(6));
        action.title = titles[Draw(4)];
        switch (Draw(6)) {
        case 0: action.deadline = 86400l; break;
        case 1: action.deadline = 7200l; break;
        case 2: action.deadline = 60l; break;
        case 3: action.deadline = -60l; break;
        default: break;
        }
        action.cancellable = Draw(2) == 0;
        action.hasPreview = Draw(4) == 0;
        action.restart = Draw(4) == 0;
        return action;
    }

    std::mt19937 m_generator;
};

void Apply(Change const& change) {
    switch (change.kind) {
    case Change::Arrives: Add(change.action); break;
    case Change::Leaves: {
        auto const found = actions.FindFirst(change.action.id);
        if (found != actions.end()) actions.erase(found);
        break;
    }
    case Change::AllLeave: actions.clear(); break;
    case Change::Disables: DisableActionRequestDialog(); return;
    case Change::Enables: EnableActionRequestDialog(); return;
    }
    UpdateActionRequestDialog();
}

} // namespace

class Batch : public DialogTest {
protected:
    static std::string Shown() {
        Settle();
        std::string shown;
        for (char const* const list : {"viewport", "snoozeViewport"}) {
            for (std::string const& row : Rows(ListIn(list))) shown += row + "|";
            shown += " highlighted " + std::to_string(Highlight(ListIn(list))) + " at " +
                     std::to_string(static_cast<short>(Number(ListIn(list), XtNy))) + "\n";
        }
        shown += Label("form.actiontitle") + "\n" + Text(Find("form.actiondesc"), XtNstring) + "\n";
        for (char const* const button :
             {"takeAllActions", "takeActions", "cancelAction", "actionDetails", "snoozeButton"}) {
            std::string const path = std::string("form.") + button;
            shown += Label(path) + (IsSensitive(path) ? " on" : " off") +
                     (Flag(Find(path), XtNmappedWhenManaged) ? "\n" : " hidden\n");
        }
        shown += XtIsSensitive(ListIn("snoozeViewport")) ? "list on\n" : "list off\n";
        return shown;
    }

    // The same start for both ways: these actions, that row clicked.
    static void Start(Changes const& before, int row) {
        HideActionRequestDialog();
        Settle();
        actions.clear();
        // With nothing pending no row stays selected from an earlier opening.
        UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
        HideActionRequestDialog();
        Settle();
        for (Change const& change : before) Add(change.action);
        UnixApp_ShowActionRequestDialog(false, TimeInterval::FromMicroseconds(-300000000), true);
        Settle();
        if (row < static_cast<int>(Rows(ListIn("viewport")).size()) && actions.CountRows() > 0)
            ClickRow(ListIn("viewport"), row);
    }
};

TEST_F(Batch, ShowsWhatARefreshAfterEachChangeWouldHaveLeft) {
    for (unsigned int seed = 0; seed < 150; ++seed) {
        RandomChanges random(seed);
        Changes const before = random.Make(4, true);
        Changes const changes = random.Make(8, false);
        int const row = random.Draw(4);

        Start(before, row);
        for (Change const& change : changes) Apply(change);
        std::string const oneByOne = Shown();

        Start(before, row);
        {
            ActionRequestDialogBatch const batch;
            for (Change const& change : changes) Apply(change);
        }
        ASSERT_EQ(Shown(), oneByOne) << "seed " << seed;
    }
}

TEST_F(Batch, ThatHidesTheDialogRefreshesNothing) {
    Add({.id = 1});
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    {
        ActionRequestDialogBatch const batch;
        Add({.id = 2});
        UpdateActionRequestDialog();
        HideActionRequestDialog();
    }
    EXPECT_FALSE(IsActionRequestDialogShown());
}
