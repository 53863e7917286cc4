#pragma once

#include <string>

// Locales for the tests, compiled when the tests are built: "de_DE.UTF-8", "de_DE.ISO-8859-1", "ja_JP.EUC-JP"
// and "zh_TW.BIG5" (which reads some pairs of bytes as one character). They are found by a process whose
// environment has LOCPATH set to Folder(); with it, only "C", "C.UTF-8" and "POSIX" are there besides.
class TestLocales {
public:
    static std::string const& Folder();
};
