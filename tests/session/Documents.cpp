#include "tests/session/Documents.h"

#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdio>
#include <ctime>

std::string TimeFromNow(long seconds) {
    static char const* const days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static char const* const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::time_t const time = std::time(nullptr) + seconds;
    std::tm parts{};
    gmtime_r(&time, &parts);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d +0000", days[parts.tm_wday],
                  parts.tm_mday, months[parts.tm_mon], parts.tm_year + 1900, parts.tm_hour, parts.tm_min,
                  parts.tm_sec);
    return text.data();
}

std::string const& SessionFolder() {
    static TemporaryFolder const folder;
    return folder.Path();
}

std::string Initialization(std::string const& settings) {
    return InitializationOf(SessionFolder(), "", settings);
}

std::string InitializationOf(std::string const& directory, std::string const& supportFiles,
                             std::string const& settings) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ClientToUI>\n\t<InitializationInfo>\n\t\t"
           "<BaseDirectory>" +
           directory + "</BaseDirectory>" + supportFiles + "<InitialUISettings>" + settings +
           "</InitialUISettings>\n\t</InitializationInfo>\n</ClientToUI>";
}

std::string ForcedAction(unsigned long id, std::string const& deadline) {
    return "<ClientToUI><ActionRequest><ID>" + std::to_string(id) +
           "</ID><Title>Restart</Title><ForceRun>true</ForceRun><Deadline>" + deadline +
           "</Deadline></ActionRequest></ClientToUI>";
}

char const* const cReadyForData = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                  "<ClientToUI>\n"
                                  "\t<ReadyForData>\n"
                                  "\t\t<ProtocolVersionMin>1</ProtocolVersionMin>\n"
                                  "\t\t<ProtocolVersionMax>1</ProtocolVersionMax>\n"
                                  "\t\t<NewProtocolVersionMin>1</NewProtocolVersionMin>\n"
                                  "\t\t<NewProtocolVersionMax>1</NewProtocolVersionMax>\n"
                                  "\t\t<ClientUIPid>0</ClientUIPid>\n"
                                  "\t</ReadyForData>\n"
                                  "</ClientToUI>";
