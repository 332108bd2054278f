// How markups come into a view and leave it.
#pragma once

#include "host/HostApi.h"
#include "host/du/SmartPtr.h"

namespace hxk {

class Markup;

// Something that markups can be attached to.
class HOST_API MarkupHolder {
public:
    virtual ~MarkupHolder();

    // Attaches a markup and holds a reference to it; attaching it again or attaching null does nothing.
    virtual void AddMarkup(const du::SmartPtr<Markup>& markup) = 0;
    // Detaches it; a markup that is not attached is nothing to do.
    virtual void RemoveMarkup(const du::SmartPtr<Markup>& markup) = 0;
};

}  // namespace hxk
