// The markups of plug-ins, a class apart from those of the host itself.
#pragma once

#include "host/HostApi.h"
#include "host/hxk/Markup.h"

namespace hxmk {

// The base that a plug-in's own markups derive from.
class HOST_API Markup : public hxk::Markup {
public:
    ~Markup() override;

protected:
    Markup();
};

}  // namespace hxmk
