// The settings of a view, by name.
#pragma once

#include "host/HostApi.h"
#include "host/du/RefCounted.h"
#include "host/du/Symbol.h"

namespace hxk {

// A set of named settings.
class HOST_API Preferences : public du::RefCounted {
public:
    ~Preferences() override;

    // True when the key exists; its value is then in `value`, which otherwise stays as it is. Where the optional flag
    // is given it tells whether the value is the set's own (true) or an inherited default.
    virtual bool GetBool(const du::Symbol& key, bool& value, bool* isOwn = nullptr) const = 0;
};

}  // namespace hxk
