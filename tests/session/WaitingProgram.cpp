#include "tests/session/WaitingProgram.h"

#include "tests/session/Documents.h"

#include <algorithm>
#include <gtest/gtest.h>

using std::chrono::milliseconds;

namespace {

// More than the time between two looks at what has come.
constexpr milliseconds cUntilSentAgain{1500};

bool HaveEnded(std::vector<InitializingDocument> const& documents) {
    return std::none_of(documents.begin(), documents.end(),
                        [](InitializingDocument const& each) { return each.session->IsRunning(); });
}

} // namespace

ClientSession::Options UnusableDisplay() {
    ClientSession::Options options;
    options.display = "unix:99999";
    return options;
}

std::unique_ptr<ClientSession> StartedAndReady(std::function<void()> prepare) {
    ClientSession::Options options = UnusableDisplay();
    options.prepare = std::move(prepare);
    auto session = std::make_unique<ClientSession>(options);
    EXPECT_EQ(session->ReadDocument(), cReadyForData);
    return session;
}

std::string Padded(std::string const& document, std::size_t size) {
    EXPECT_LE(document.size(), size);
    return document + std::string(size - std::min(size, document.size()), ' ');
}

void ExpectInitialized(std::vector<InitializingDocument> const& documents) {
    EXPECT_TRUE(WaitFor([&] {
        for (InitializingDocument const& each : documents)
            if (each.session->IsRunning()) each.session->SendDocument(each.document);
        return WaitFor([&] { return HaveEnded(documents); }, cUntilSentAgain);
    }));
    for (std::size_t index = 0; index < documents.size(); ++index)
        EXPECT_EQ(documents[index].session->WaitForExitStatus(milliseconds(0)), 255) << "program " << index;
}

void ExpectInitialized(ClientSession& session, std::string const& document) {
    ExpectInitialized({{&session, document}});
}
