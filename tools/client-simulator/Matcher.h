#pragma once

#include "tools/client-simulator/Scenario.h"

#include <string>
#include <string_view>
#include <vector>

namespace ClientSimulator {

// How a document differs from a pattern, one sentence a difference; empty when it fits. The document has to
// hold exactly one message; fields that the pattern does not name may be anything. Values are rendered with
// `context`, so "now" is its moment. Throws RenderError.
std::vector<std::string> Differences(MessagePattern const& pattern, std::string_view document,
                                     RenderContext const& context);

} // namespace ClientSimulator
