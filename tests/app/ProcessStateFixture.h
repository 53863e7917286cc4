#pragma once

#include "app/ProcessState.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

// Starts each test with the state of a fresh process.
class ProcessStateTest : public testing::Test {
protected:
    ProcessStateTest();

    // Puts a document on readQ.
    static void Receive(std::string const& document);
    // The messages of `children` under one root.
    static std::string Document(std::string const& children);
    static std::string Action(unsigned long id, std::string const& fields = "");
    // The documents on writeQ, which is emptied.
    static std::vector<std::string> Sent();
    static std::vector<unsigned long> PendingIDs();
};
