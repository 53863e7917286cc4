#pragma once

#include "tools/screen-user/Widget.h"

#include <string>

namespace ScreenUser {

// Keeps a picture of a window, or of the whole screen, in a file, whose ending tells the form, such as
// ".png". What lies over the window is in the picture. Runs the program `import`. Throws UserError. `display`
// as for a User; the environment's DISPLAY if empty. A frame is what the window manager puts around the
// window; without one there is none, and the window alone is in the picture.
enum class WindowFrame { LeftOut, Included };
void TakePicture(std::string const& display, std::string const& file, WindowID window = cNoWindow,
                 WindowFrame frame = WindowFrame::LeftOut);

} // namespace ScreenUser
