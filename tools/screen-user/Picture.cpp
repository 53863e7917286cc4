#include "tools/screen-user/Picture.h"

#include "tools/screen-user/UserError.h"

#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ScreenUser {

namespace {

// The status as waitpid tells it; -1 when the program cannot be started.
int RunProgram(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawnp(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return -1;
    int status = -1;
    if (waitpid(process, &status, 0) != process) return -1;
    return status;
}

} // namespace

void TakePicture(std::string const& display, std::string const& file, WindowID window, WindowFrame frame) {
    std::vector<std::string> command{"import", "-window",
                                     window == cNoWindow ? "root" : std::to_string(window)};
    if (frame == WindowFrame::Included) command.push_back("-frame");
    if (!display.empty()) command.insert(command.end(), {"-display", display});
    command.push_back(file);
    if (RunProgram(command) != 0)
        throw UserError("No picture was taken into " + file +
                        "; its folder has to be there, and so has the program import of ImageMagick.");
}

} // namespace ScreenUser
