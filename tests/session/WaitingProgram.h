#pragma once

#include "tests/session/ClientSession.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// The program without a display, up to the point where it would open one.

// The longest document that it takes.
inline constexpr std::size_t cLargestFrame = 2097152;

// A display that nobody serves: a program that tried to open it would end with status 255.
ClientSession::Options UnusableDisplay();
// A program for it that has said its first word. `prepare` as in ClientSession::Options.
std::unique_ptr<ClientSession> StartedAndReady(std::function<void()> prepare = {});
// The document with blanks behind it, `size` bytes in all.
std::string Padded(std::string const& document, std::size_t size);

// A document that initializes a program.
struct InitializingDocument {
    ClientSession* session;
    std::string document;
};
// Sends each until it has been taken, and expects it to be: the program goes on to its display and so ends
// with 255. One that meets a batch which fails is lost with it, so that it may take several.
void ExpectInitialized(std::vector<InitializingDocument> const& documents);
void ExpectInitialized(ClientSession& session, std::string const& document);
