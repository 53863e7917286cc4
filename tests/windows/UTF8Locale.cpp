#include "tests/windows/ChooseLocale.h"

#include "app/ProcessState.h"

#include <clocale>
#include <cstdlib>

// The widgets speak UTF-8.
void ChooseLocale() {
    setenv("LC_ALL", "C.UTF-8", 1);
    setlocale(LC_CTYPE, "");
    international = true;
}
