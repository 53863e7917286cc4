#pragma once

#include <exception>
#include <string>

// How a call ended: "value", or what() of the failure, which names its class ("14ParsingFailure").
template <class Call>
std::string Outcome(Call call) {
    try {
        call();
        return "value";
    } catch (std::exception const& failure) {
        return failure.what();
    }
}
