// The least that any touch navigation has to do with a frame: the floor under the component's figures.
#pragma once

#include "bench/BenchHost.h"

#include "host/dg/Quaternion.h"
#include "host/workflow/SimpleWorkflow.h"

#include <array>
#include <cstddef>

namespace bench {

// Takes a frame through the same virtual call, stores its records in a table of ten slots, reads the camera, turns it
// by one quaternion that it does not have to find, and writes it back. No gesture, no status text, no frame made
// orthonormal again.
class FloorWorkflow : public workflow::SimpleWorkflow {
public:
    explicit FloorWorkflow(const du::SmartPtr<hxk::ShapeView>& view);

    bool OnMsgTouch(int reserved, int count, int id0, int x0, int y0, int time0, int flags0, int id1, int x1, int y1,
                    int time1, int flags1, int id2, int x2, int y2, int time2, int flags2, int id3, int x3, int y3,
                    int time3, int flags3, int id4, int x4, int y4, int time4, int flags4, int id5, int x5, int y5,
                    int time5, int flags5, int id6, int x6, int y6, int time6, int flags6, int id7, int x7, int y7,
                    int time7, int flags7, int id8, int x8, int y8, int time8, int flags8, int id9, int x9, int y9,
                    int time9, int flags9) override;

private:
    struct Record {
        int id;
        int x;
        int y;
        int time;
        int flags;
    };

    du::SmartPtr<hxk::ShapeView> m_view;
    std::array<Record, 10> m_slots{};
    dg::DPoint3D m_center;
    dg::Quaternion<float> m_turn{0.0F, 0.001F, 0.0F, 0.9999995F};
};

}  // namespace bench
