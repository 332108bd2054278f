// Any bytes as a session. What the reader accepts must survive being written and read again; what it refuses, it must
// refuse with its own error.
#include "fuzz/ReadFault.h"
#include "fuzz/Require.h"
#include "replay/files/ReadError.h"
#include "replay/session/SessionReader.h"
#include "replay/session/SessionWriter.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

namespace {

const std::string FileName = "fuzz.session.jsonl";

std::optional<replay::Session> Read(const std::string& text) {
    std::istringstream input(text);
    try {
        return replay::ReadSession(input, FileName);
    } catch (const replay::ReadError& error) {
        fuzz::RequireNamedFault(error, FileName, text, false);
        return std::nullopt;
    }
}

std::string Written(const replay::Session& session) {
    std::ostringstream output;
    replay::WriteSession(session, output);
    return output.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<replay::Session> session = Read(std::string(data, data + size));
    if (!session) {
        return 0;
    }
    const std::string text = Written(*session);
    const std::optional<replay::Session> again = Read(text);
    fuzz::Require(again.has_value(), "what was written can be read: " + text);
    fuzz::Require(*again == *session, "what was written reads back equal: " + text);
    fuzz::Require(Written(*again) == text, "an equal session is written the same: " + text);
    return 0;
}
