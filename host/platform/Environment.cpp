// A host's answer takes the place of the process environment as a whole: with a provider no variable is read.
#include "host/platform/Environment.h"

#include <cstdlib>

namespace platform {
namespace {

const EnvironmentProvider* s_provider = nullptr;

}  // namespace

EnvironmentProvider::~EnvironmentProvider() = default;

bool IsEnvironmentVariablePresent(const char* name) {
    return s_provider != nullptr ? s_provider->IsPresent(name) : std::getenv(name) != nullptr;
}

void SetEnvironmentProvider(const EnvironmentProvider* provider) noexcept {
    s_provider = provider;
}

}  // namespace platform
