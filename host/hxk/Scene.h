// The scene behind a view. Spin transitions refer to it; the component does not look into it.
#pragma once

#include "host/HostApi.h"
#include "host/du/RefCounted.h"

namespace hxk {

// What a view shows. Others hold scenes by reference only.
class HOST_API Scene : public du::RefCounted {
public:
    ~Scene() override;
};

}  // namespace hxk
