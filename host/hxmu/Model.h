// Model primitives: the tree that a markup's content is made of.
#pragma once

#include "host/HostApi.h"
#include "host/attrs/FillAttr.h"
#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/hxmu/RenderAttrsVector.h"

#include <array>
#include <cstdint>
#include <list>
#include <vector>

namespace hxmu {

// Selection state of a primitive.
struct ModelState {
    bool selected = false;
    int group = 0;
    std::int64_t stamp = 0;

    friend bool operator==(const ModelState&, const ModelState&) = default;
};

// Base of the primitives: a placement, render attributes and a state.
class HOST_API ModelBase : public du::RefCounted {
public:
    ~ModelBase() override;

    // Carries the primitive's own coordinates into the world.
    [[nodiscard]] const dg::Location& GetLocation() const noexcept { return m_location; }
    [[nodiscard]] dg::Location& GetLocation() noexcept { return m_location; }

    void SetRenderAttrsVector(const du::SmartPtr<RenderAttrsVector>& attributes) { m_attributes = attributes; }
    // Null until set: the host's defaults apply.
    [[nodiscard]] const du::SmartPtr<RenderAttrsVector>& GetRenderAttrsVector() const noexcept { return m_attributes; }

    void SetModelState(const ModelState& state) noexcept { m_state = state; }
    [[nodiscard]] const ModelState& GetModelState() const noexcept { return m_state; }

protected:
    ModelBase();

private:
    dg::Location m_location;
    du::SmartPtr<RenderAttrsVector> m_attributes;
    ModelState m_state;
};

// A ball about its own origin.
class HOST_API ModelSphere : public ModelBase {
public:
    // The size is the ball's radius as a share of the length unit of the markup.
    explicit ModelSphere(float size);
    ~ModelSphere() override;

    [[nodiscard]] float GetSize() const noexcept { return m_size; }
    void SetFillAttrs(const du::SmartPtr<attrs::FillAttr>& fill) { m_fill = fill; }
    [[nodiscard]] const du::SmartPtr<attrs::FillAttr>& GetFillAttrs() const noexcept { return m_fill; }

private:
    float m_size;
    du::SmartPtr<attrs::FillAttr> m_fill;
};

// A line through points, with an optional round head at its last point.
class HOST_API ModelLeaderLine : public ModelBase {
public:
    // Style 5 is a plain line of even width.
    explicit ModelLeaderLine(int style);
    ~ModelLeaderLine() override;

    [[nodiscard]] int GetStyle() const noexcept { return m_style; }
    void AppendPoint(const dg::DPoint3D& point) { m_points.push_back(point); }
    [[nodiscard]] const std::vector<dg::DPoint3D>& GetPoints() const noexcept { return m_points; }
    // Line width, gap and head length, as shares of the length unit of the markup.
    void SetSizes(float width, float gap, float headLength) noexcept { m_sizes = {width, gap, headLength}; }
    [[nodiscard]] const std::array<float, 3>& GetSizes() const noexcept { return m_sizes; }
    void SetArrowHeadRound(const du::SmartPtr<ModelBase>& head) { m_head = head; }
    // Null when the line has no head.
    [[nodiscard]] const du::SmartPtr<ModelBase>& GetArrowHeadRound() const noexcept { return m_head; }

private:
    int m_style;
    std::vector<dg::DPoint3D> m_points;
    std::array<float, 3> m_sizes{};
    du::SmartPtr<ModelBase> m_head;
};

// A list of primitives.
class HOST_API ModelContainer : public ModelBase {
public:
    ModelContainer();
    ~ModelContainer() override;

    // Adds a primitive in front of the others.
    void AddHead(const du::SmartPtr<ModelBase>& model) { m_models.push_front(model); }
    [[nodiscard]] const std::list<du::SmartPtr<ModelBase>>& GetModels() const noexcept { return m_models; }

private:
    std::list<du::SmartPtr<ModelBase>> m_models;
};

}  // namespace hxmu
