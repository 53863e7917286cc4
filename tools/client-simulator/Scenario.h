#pragma once

#include "tools/client-simulator/Duration.h"
#include "tools/client-simulator/Template.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ClientSimulator {

// One change of the environment in which the process is started; without a value the variable is taken out.
struct EnvironmentChange {
    std::string name;
    std::optional<std::string> value;
};

// Reads "NAME=VALUE" or "NAME" (take it out); null when the name is empty.
std::optional<EnvironmentChange> ParseEnvironmentChange(std::string_view text);

// What one field of a message has to be. `path` leads from the message to the field: "ID", or "A/B" for a
// field in a field.
struct FieldCheck {
    enum class Kind { Equal, NotEqual, Contains, Near, Present, Absent };

    std::string path;
    Kind kind = Kind::Equal;
    Template value = {};
    Microseconds tolerance{}; // of Near
};

// What a message has to be: its name (any, if empty), its document's root (any, if empty) and some fields.
struct MessagePattern {
    std::string name;
    std::string root;
    std::vector<FieldCheck> fields;
};

// Steps with `within` take the run's own time limit when they give none.

struct Send {
    struct Item {
        Template bytes;
        bool framed = true; // behind its length, as a document
    };
    std::vector<Item> items; // written by one write
};
struct ExpectMessage {
    MessagePattern pattern;
    std::optional<Microseconds> within;
};
struct ExpectDocument {
    Template document;
    bool exact = false; // byte by byte
    std::optional<Microseconds> within;
};
struct ExpectNothing {
    Microseconds duration;
};
struct ExpectEnd {
    std::optional<Microseconds> within;
};
struct ExpectExit {
    int number = 0;
    bool signal = false; // the number is that of the signal that ended the process
    std::optional<Microseconds> within;
};
struct Ignore {
    MessagePattern pattern;
};
struct Pause {
    Microseconds duration;
};
struct Close {
    bool output = false; // the simulator's end of the process's output, not of its input
};
struct Say {
    Template text;
};
struct Let {
    std::string name;
    Template value;
};

struct Step {
    int line;
    std::variant<Send, ExpectMessage, ExpectDocument, ExpectNothing, ExpectEnd, ExpectExit, Ignore, Pause,
                 Close, Say, Let>
        action;
};

struct Scenario {
    std::filesystem::path file;
    std::vector<EnvironmentChange> environment;
    std::vector<Step> steps;
};

// A scenario that cannot be read: "FILE:LINE: what is wrong; expected what would be right".
class ScenarioError : public std::runtime_error {
public:
    ScenarioError(std::filesystem::path const& file, int line, std::string const& what);
};

// Reads the text of a scenario; `file` is for messages and for paths in the scenario. Throws ScenarioError.
Scenario ParseScenario(std::string_view text, std::filesystem::path const& file);

// Reads a scenario from its file. Throws ScenarioError, with line 0 when the file cannot be read.
Scenario LoadScenario(std::filesystem::path const& file);

} // namespace ClientSimulator
