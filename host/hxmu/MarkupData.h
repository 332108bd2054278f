// What a markup shows, behind one pointer, so that it is replaced as a whole.
#pragma once

#include "host/HostApi.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/hxmu/Model.h"

namespace hxmu {

// The content of a markup: one model tree.
class HOST_API MarkupData : public du::RefCounted {
public:
    MarkupData();
    ~MarkupData() override;

    void SetModelBase(const du::SmartPtr<ModelBase>& model) { m_model = model; }
    // Null until set.
    [[nodiscard]] const du::SmartPtr<ModelBase>& GetModelBase() const noexcept { return m_model; }

private:
    du::SmartPtr<ModelBase> m_model;
};

}  // namespace hxmu
