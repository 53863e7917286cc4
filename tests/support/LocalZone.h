#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

// Puts the process into a zone, given in the form of the variable TZ ("AAA-5:30" lies five and a half hours
// east); puts it back at its end.
class LocalZone {
public:
    explicit LocalZone(char const* zone) {
        if (char const* const old = std::getenv("TZ")) {
            m_hadZone = true;
            m_oldZone = old;
        }
        setenv("TZ", zone, 1);
        tzset();
    }
    LocalZone(LocalZone const&) = delete;
    LocalZone& operator=(LocalZone const&) = delete;
    ~LocalZone() {
        if (m_hadZone)
            setenv("TZ", m_oldZone.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    bool m_hadZone = false;
    std::string m_oldZone;
};
