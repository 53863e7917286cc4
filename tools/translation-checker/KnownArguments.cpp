#include "tools/translation-checker/TextExtraction.h"

namespace TranslationChecker {

std::span<KnownArgument const> KnownArguments() {
    static std::vector<KnownArgument> const& known = *new std::vector<KnownArgument>{
        // The functions themselves: their texts are those of their calls.
        {"format/UFormat.cpp", "view"},
        {"format/UFormat.cpp", "key"},
        {"app/WidgetHelpers.cpp", "text"},
        // Tables
        {"dialogs/ActionSummary.cpp", "wording[row].text", {{"cActionWording"}, {"cCombinedWording"}}},
        {"dialogs/SnoozeChoices.cpp", "row.text", {{"cRowsBeforeDeadline"}, {"cRowsFromNow"}}},
        {"dialogs/FormattedValues.cpp",
         "name",
         {{"cNames", "time/DayOfWeek.cpp"}, {"cAbbreviations", "time/DayOfWeek.cpp"}}},
        // Labels that a view chooses
        {"dialogs/ActionRequestDialog.cpp", "view.takeLabel", {{"takeLabel"}}},
        {"dialogs/ActionRequestDialog.cpp", "view.cancelLabel", {{"cancelLabel"}}},
        {"dialogs/ActionRequestDialog.cpp", "view.snoozeLabel", {{"snoozeLabel"}}},
    };
    return known;
}

} // namespace TranslationChecker
