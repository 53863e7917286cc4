#include "dialogs/WidgetText.h"

#include "text/LocalText.h"

std::string WidgetText(UStringRef<UTF8> const& text) {
    return MakeLocalString<UTF8>(text).c_str();
}
