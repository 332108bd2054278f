// Environment switches. The component asks here; the host may answer in place of the process environment.
#pragma once

#include "host/HostApi.h"

namespace platform {

class HOST_API EnvironmentProvider {
public:
    virtual ~EnvironmentProvider();
    // Whether a variable is present, whatever its value.
    virtual bool IsPresent(const char* name) const = 0;
};

// Whether a variable is present (an empty value counts): what the provider says, without one the process environment.
[[nodiscard]] HOST_API bool IsEnvironmentVariablePresent(const char* name);

// Sets the provider for the process; null goes back to the process environment. Not owned: it must outlive its use.
HOST_API void SetEnvironmentProvider(const EnvironmentProvider* provider) noexcept;

}  // namespace platform
