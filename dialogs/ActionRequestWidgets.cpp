#include "dialogs/ActionRequestWidgets.h"

#include "app/ProcessState.h"
#include "app/WidgetHelpers.h"
#include "dialogs/DialogParts.h"
#include "dialogs/LocalizedStrings.h"

#include <X11/StringDefs.h>
#include <X11/Xaw/Form.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/List.h>
#include <X11/Xaw/Viewport.h>
#include <string>

// The form attaches nothing to its right edge: what stands at the right is placed by its distance from the
// left edge, worked out from the width of the panes. All widths are in pixels.

namespace {

constexpr int cPaneWidth = 500;
constexpr int cDescriptionHeight = 70;
// What the list is narrower than the panes, before its scroll bar is added.
constexpr int cViewportInset = 15;

std::string Literal(char const* text) {
    return *ControlLiteral(text);
}

std::string Literal(AutoNullTerminated<Local8Bit> text) {
    return *ControlLiteral(std::move(text));
}

Widget CreateCaption(Widget form, char const* name, std::string const& label, Widget above, int distance) {
    WidgetArguments arguments;
    arguments.Number(XtNborderWidth, 0).Under(above);
    if (distance > 0) arguments.Number(XtNvertDistance, distance);
    return arguments.Text(XtNlabel, CutForWidget(label)).International().Create(form, name, labelWidgetClass);
}

Widget CreateViewport(Widget form, char const* name, int height, int width, Widget above) {
    return WidgetArguments()
        .Under(above)
        .Number(XtNheight, height)
        .Number(XtNwidth, width)
        .Number(XtNallowVert, True)
        .Number(XtNforceBars, True)
        .Create(form, name, viewportWidgetClass);
}

// A list without rows shows its name: hence the empty one.
Widget CreateList(Widget viewport) {
    return WidgetArguments()
        .Number(XtNdefaultColumns, 1)
        .Number(XtNforceColumns, True)
        .Number(XtNverticalList, True)
        .International()
        .Create(viewport, "", listWidgetClass);
}

void RegisterActionOnce(XtActionProc actionChosen) {
    static bool registered = false;
    if (registered) return;
    std::string postponeListSelect = "PostponeListSelect";
    std::string nothing = "Nothing";
    XtActionsRec actionTable[] = {{postponeListSelect.data(), actionChosen}, {nothing.data(), nullptr}};
    XtAppAddActions(app_context, actionTable, XtNumber(actionTable));
    registered = true;
}

// The click itself selects; the list's own callback would also come for a click outside any row.
Widget CreateActionList(Widget viewport, XtActionProc actionChosen) {
    RegisterActionOnce(actionChosen);
    Widget const list = CreateList(viewport);
    // Parsed once: the toolkit keeps a parsed table for good.
    static XtTranslations const translations =
        XtParseTranslationTable("<Btn1Up>: Notify() PostponeListSelect()\n");
    XtOverrideTranslations(list, translations);
    return list;
}

void CreateDescription(ActionRequestWidgets& widgets) {
    widgets.actionTitle = WidgetArguments()
                              .Number(XtNwidth, cPaneWidth)
                              .Number(XtNborderWidth, 0)
                              .Number(XtNjustify, XtJustifyLeft)
                              .International()
                              .Create(widgets.form, "actiontitle", labelWidgetClass);
    widgets.actionDescription =
        CreateTextPane(widgets.form, "actiondesc", cPaneWidth, cDescriptionHeight, widgets.actionTitle);
}

void CreateActions(ActionRequestWidgets& widgets, XtActionProc actionChosen) {
    std::string const heading = Literal("Title") + Literal("  --  ") + Literal("Deadline");
    Widget const caption =
        CreateCaption(widgets.form, "actionListLabel", heading, widgets.actionDescription, 10);
    widgets.viewport = CreateViewport(widgets.form, "viewport", 100, cPaneWidth - cViewportInset, caption);
    widgets.actionList = CreateActionList(widgets.viewport, actionChosen);
}

void CreateActionButtons(ActionRequestWidgets& widgets, ActionRequestCallbacks const& callbacks) {
    Widget const form = widgets.form;
    Widget const above = widgets.viewport;
    widgets.takeAllActions = CreateButton(form, "takeAllActions", Literal(LocalizedStrings::TakeAllActions()),
                                          above, callbacks.takeAll);
    widgets.takeActions = CreateButton(form, "takeActions", Literal("Take Actions"), above, callbacks.take);
    widgets.cancelAction =
        CreateButton(form, "cancelAction", Literal("Cancel Actions"), above, callbacks.cancel);
    widgets.actionDetails = CreateButton(
        form, "actionDetails", Literal(LocalizedStrings::ActionHistoryTitle()), above, callbacks.details);
}

void CreateSnoozing(ActionRequestWidgets& widgets, ActionRequestCallbacks const& callbacks) {
    Widget const caption = CreateCaption(
        widgets.form, "snoozeLabel", Literal(LocalizedStrings::SnoozeCaption()), widgets.takeAllActions, 0);
    widgets.snoozeViewport = CreateViewport(widgets.form, "snoozeViewport", 40, 400, caption);
    widgets.snoozeList = CreateList(widgets.snoozeViewport);
    XtAddCallback(widgets.snoozeList, XtNcallback, callbacks.snoozeChosen, nullptr);
    widgets.snoozeButton =
        CreateButton(widgets.form, "snoozeButton", Literal("Snooze"), caption, callbacks.snooze);
}

// Buttons with long labels widen the panes to what they need.
void WidenPanes(ActionRequestWidgets const& widgets, int width, int border) {
    SetWidth(widgets.actionTitle, width - border);
    SetWidth(widgets.actionDescription, width - border);
    SetWidth(widgets.viewport, width - cViewportInset - border);
    XawFormDoLayout(widgets.form, True);
}

void LayOut(ActionRequestWidgets const& widgets) {
    int const border = BorderWidthOf(widgets.actionDescription);
    int width = WidthOf(widgets.actionDescription);
    std::initializer_list<Widget> const fromTheRight = {widgets.takeActions, widgets.cancelAction,
                                                        widgets.actionDetails};
    int const buttons = WidthOf(widgets.takeActions) + WidthOf(widgets.cancelAction) +
                        WidthOf(widgets.actionDetails) + WidthOf(widgets.takeAllActions) + 20 * border;
    PlaceInRow(fromTheRight, width + border, border);
    if (buttons > width) {
        width = buttons;
        PlaceInRow(fromTheRight, width + border, border);
        WidenPanes(widgets, width, border);
    }
    PlaceInRow({widgets.snoozeButton}, width + border, border);
}

Widget VerticalBar(Widget viewport) {
    return XtNameToWidget(viewport, "vertical");
}

// The bar takes its room from the list: what it takes is given back.
void MakeRoomForBar(Widget viewport) {
    Widget const bar = VerticalBar(viewport);
    if (!bar) return;
    int const width = WidthOf(viewport) + WidthOf(bar);
    XtUnmanageChild(viewport);
    SetWidth(viewport, width);
    XtManageChild(viewport);
}

void ConnectBar(Widget viewport, Widget list) {
    OverrideScrollbarTranslations(VerticalBar(viewport));
    ScrollSelectedItemIntoView(viewport, list);
}

} // namespace

ActionRequestWidgets CreateActionRequestWidgets(ActionRequestCallbacks const& callbacks) {
    ActionRequestWidgets widgets;
    widgets.shell = CreateDialogShell(Literal(LocalizedStrings::ActionRequestTitle()));
    widgets.form = CreateForm(widgets.shell);
    CreateDescription(widgets);
    CreateActions(widgets, callbacks.actionChosen);
    CreateActionButtons(widgets, callbacks);
    CreateSnoozing(widgets, callbacks);
    LayOut(widgets);
    RealizeDialog(widgets.shell);
    MakeRoomForBar(widgets.viewport);
    MakeRoomForBar(widgets.snoozeViewport);
    PlaceDialog(widgets.shell);
    ConnectBar(widgets.viewport, widgets.actionList);
    ConnectBar(widgets.snoozeViewport, widgets.snoozeList);
    OverrideScrollbarTranslations(TextScrollbar(widgets.actionDescription));
    return widgets;
}
