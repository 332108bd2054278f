// As plain as it can be: whatever is added here makes the component look better than it is.
#include "bench/Floor.h"

namespace bench {

FloorWorkflow::FloorWorkflow(const du::SmartPtr<hxk::ShapeView>& view)
    : SimpleWorkflow(du::Symbol("floor")), m_view(view) {}

bool FloorWorkflow::OnMsgTouch(int /*reserved*/, int /*count*/, int id0, int x0, int y0, int time0, int flags0, int id1,
                               int x1, int y1, int time1, int flags1, int id2, int x2, int y2, int time2, int flags2,
                               int id3, int x3, int y3, int time3, int flags3, int id4, int x4, int y4, int time4,
                               int flags4, int id5, int x5, int y5, int time5, int flags5, int id6, int x6, int y6,
                               int time6, int flags6, int id7, int x7, int y7, int time7, int flags7, int id8, int x8,
                               int y8, int time8, int flags8, int id9, int x9, int y9, int time9, int flags9) {
    m_slots = {{{id0, x0, y0, time0, flags0},
                {id1, x1, y1, time1, flags1},
                {id2, x2, y2, time2, flags2},
                {id3, x3, y3, time3, flags3},
                {id4, x4, y4, time4, flags4},
                {id5, x5, y5, time5, flags5},
                {id6, x6, y6, time6, flags6},
                {id7, x7, y7, time7, flags7},
                {id8, x8, y8, time8, flags8},
                {id9, x9, y9, time9, flags9}}};
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    m_view->SetCameraLocation(camera.GetLocation() * dg::DMat44::Rotation(m_center, m_turn));
    return true;
}

}  // namespace bench
