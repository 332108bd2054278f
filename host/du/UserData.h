// A common base for whatever other code attaches to an object.
#pragma once

#include "host/HostApi.h"

namespace du {

// Base of data that can be attached to host objects. Owned by whoever attached it.
class HOST_API UserData {
public:
    virtual ~UserData();

protected:
    UserData() = default;
    UserData(const UserData&) = default;
    UserData& operator=(const UserData&) = default;
};

}  // namespace du
