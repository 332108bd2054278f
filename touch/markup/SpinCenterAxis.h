// One axis of the spin-centre cross.
#pragma once

#include "host/dg/Point.h"
#include "host/du/RefCounted.h"
#include "host/du/SmartPtr.h"
#include "host/hxmu/Model.h"

namespace touch {

// A coloured line of unit length with a ball at its end: X red, Y green, Z blue.
class SpinCenterAxis : public du::RefCounted {
public:
    // Axis 0, 1 or 2 for X, Y or Z, from an origin in the axis's own coordinates. Any other index gives a black axis
    // of length zero.
    SpinCenterAxis(unsigned int index, dg::DPoint3D origin);
    ~SpinCenterAxis() override;

    [[nodiscard]] const du::SmartPtr<hxmu::ModelLeaderLine>& GetLeaderLine() const noexcept { return m_leaderLine; }
    // Moves the axis: its placement takes the position, its geometry stays as built.
    void SetPosition(const dg::DPoint3D& position);

private:
    du::SmartPtr<hxmu::ModelLeaderLine> m_leaderLine;
};

}  // namespace touch
