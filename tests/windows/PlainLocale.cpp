#include "tests/windows/ChooseLocale.h"

#include "app/ProcessState.h"

// No locale: widgets draw each byte as a glyph.
void ChooseLocale() {
    international = false;
}
