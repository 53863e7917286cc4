#include "tools/client-simulator/Player.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace {

using namespace ClientSimulator;

struct CommandLine {
    std::string scenario;
    std::string timeout = "10s";
    std::vector<std::string> environment;
    PlayOptions play;
    bool checkOnly = false;
};

std::string CheckDuration(std::string const& text) {
    return ParseDuration(text) ? "" : "'" + text + "' is no length of time; expected, for example, 10s";
}

std::string CheckEnvironment(std::string const& text) {
    return ParseEnvironmentChange(text) ? ""
                                        : "'" + text + "' names no variable; expected NAME=VALUE or NAME";
}

void Describe(CLI::App& app, CommandLine& line) {
    app.add_option("scenario", line.scenario, "The scenario file to play")->required();
    app.add_option("-x,--executable", line.play.start.executable, "The program to start, such as VRKClientUI")
        ->capture_default_str();
    app.add_option("-e,--environment", line.environment,
                   "NAME=VALUE sets a variable for the program, NAME takes it out; may stand several times")
        ->allow_extra_args(false)
        ->check(CheckEnvironment);
    app.add_option("-a,--argument", line.play.start.arguments,
                   "An argument for the program; may stand several times")
        ->allow_extra_args(false);
    app.add_option("-t,--timeout", line.timeout, "How long an expectation without 'within' waits")
        ->capture_default_str()
        ->check(CheckDuration);
    app.add_flag("-q,--quiet", line.play.quiet, "Print nothing but what went wrong");
    app.add_flag("-c,--check", line.checkOnly, "Only read the scenario and say whether it is well written");
    app.footer(
        "Exit status: 0 all expectations met, 1 not all, 2 bad scenario or command line, 3 the program "
        "cannot be started.\nThe format of scenarios is told in docs/client-simulator.md.");
}

Outcome Run(CommandLine const& line) {
    Scenario const scenario = LoadScenario(line.scenario);
    if (!line.checkOnly) return Play(scenario, line.play, std::cout, std::cerr);
    if (!line.play.quiet)
        std::cout << line.scenario << ": " << scenario.steps.size() << " steps" << std::endl;
    return Outcome::Met;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Plays the client's side of a conversation with VRKClientUI.", "client-simulator");
    CommandLine line;
    line.play.start.executable = "VRKClientUI";
    Describe(app, line);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(Outcome::BadScenario);
    }
    line.play.timeout = ParseDuration(line.timeout).value_or(line.play.timeout);
    for (std::string const& change : line.environment)
        line.play.start.environment.push_back(ParseEnvironmentChange(change).value_or(EnvironmentChange{}));
    try {
        return static_cast<int>(Run(line));
    } catch (ScenarioError const& error) {
        std::cerr << error.what() << std::endl;
        return static_cast<int>(Outcome::BadScenario);
    }
}
