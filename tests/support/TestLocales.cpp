#include "tests/support/TestLocales.h"

std::string const& TestLocales::Folder() {
    static auto const& folder = *new std::string(VRK_TEST_LOCALES_FOLDER);
    return folder;
}
