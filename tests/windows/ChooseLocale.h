#pragma once

// Called before the toolkit is opened: decides the locale that all dialogs of the test program speak.
void ChooseLocale();
