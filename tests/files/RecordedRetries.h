#pragma once

#include "files/FileLocation.h"
#include "files/FileRetry.h"
#include "text/UString.h"

#include <string>
#include <vector>

// What a retrying operation logs, as texts: "DeleteFile(/a) succeeded at 3", "CopyFile(/a, /b) failed at 9".
class RecordedRetries : public FileRetryLog {
public:
    std::vector<std::string> const& Lines() const { return m_lines; }

    void LogRetrySuccess(UStringRef<UTF8> const& word, FileLocation const* first, FileLocation const* second,
                         unsigned int attempts) const override {
        Add(word, first, second, " succeeded at ", attempts);
    }
    void LogRetryFailure(UStringRef<UTF8> const& word, FileLocation const* first, FileLocation const* second,
                         unsigned int attempts) const override {
        Add(word, first, second, " failed at ", attempts);
    }

private:
    static std::string Path(FileLocation const* location) { return MakeString(location->GetDisplayPath()); }
    void Add(UStringRef<UTF8> const& word, FileLocation const* first, FileLocation const* second,
             char const* outcome, unsigned int attempts) const {
        std::string line = MakeString(word) + "(";
        if (first) line += Path(first);
        if (second) line += ", " + Path(second);
        m_lines.push_back(line + ")" + outcome + std::to_string(attempts));
    }

    mutable std::vector<std::string> m_lines;
};
