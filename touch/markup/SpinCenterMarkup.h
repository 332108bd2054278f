// The axis cross that shows where the centre of rotation is while the model spins.
#pragma once

#include "host/dg/Point.h"
#include "host/du/SmartPtr.h"
#include "host/hxmk/Markup.h"
#include "touch/LiveObjects.h"
#include "touch/markup/SpinCenterAxis.h"

namespace touch {

// A markup of three axes. Their geometry is built around the origin; only their placements carry the centre.
class SpinCenterMarkup : public hxmk::Markup {
public:
    // The centre is a world point.
    explicit SpinCenterMarkup(const dg::DPoint3D& center);
    ~SpinCenterMarkup() override;

    // Moves the cross to another world point; the caller then notifies the change of content.
    void MoveSpinCenterMarkup(const dg::DPoint3D& center);

private:
    du::SmartPtr<SpinCenterAxis> m_axisX;
    du::SmartPtr<SpinCenterAxis> m_axisY;
    du::SmartPtr<SpinCenterAxis> m_axisZ;
    LiveObject m_live{ObjectKind::SpinCenterMarkup};
};

}  // namespace touch
