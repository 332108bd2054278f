// One axis line with its ball, built from the host's model primitives. Tested by
// tests/component/SpinCenterMarkupTest.cpp.
#include "touch/markup/SpinCenterAxis.h"

#include "host/attrs/FillAttr.h"
#include "host/dg/Color.h"
#include "host/hxmu/RenderAttrsVector.h"

namespace touch {
namespace {

const dg::Color XColor(1.0F, 0.2F, 0.2F, 1.0F);
const dg::Color YColor(0.2F, 1.0F, 0.2F, 1.0F);
const dg::Color ZColor(0.2F, 0.2F, 1.0F, 1.0F);

constexpr int LineStyle = 5;
constexpr int SolidFill = 0;
constexpr float LineSize = 0.07F;
constexpr float BallSize = 0.075F;

dg::DVec3 GetDirection(unsigned int index) {
    switch (index) {
    case 0: return dg::DVec3::X;
    case 1: return dg::DVec3::Y;
    case 2: return dg::DVec3::Z;
    default: return dg::DVec3::ZERO;
    }
}

dg::Color GetColor(unsigned int index) {
    switch (index) {
    case 0: return XColor;
    case 1: return YColor;
    case 2: return ZColor;
    default: return {0, 0, 0, 1};
    }
}

void Paint(hxmu::ModelBase& model, hxmu::RenderKind kind, const dg::Color& color) {
    model.SetRenderAttrsVector(du::SmartPtr<hxmu::RenderAttrsVector>(new hxmu::RenderAttrsVector(kind, color)));
    model.SetModelState({});
}

}  // namespace

SpinCenterAxis::SpinCenterAxis(unsigned int index, dg::DPoint3D origin)
    : m_leaderLine(new hxmu::ModelLeaderLine(LineStyle)) {
    m_leaderLine->SetArrowHeadRound(du::SmartPtr<hxmu::ModelSphere>(new hxmu::ModelSphere(BallSize)));
    m_leaderLine->AppendPoint(origin);
    m_leaderLine->AppendPoint(origin + GetDirection(index));
    const dg::Color color = GetColor(index);
    Paint(*m_leaderLine, hxmu::RenderLines, color);
    if (auto* ball = dynamic_cast<hxmu::ModelSphere*>(m_leaderLine->GetArrowHeadRound().Get())) {
        Paint(*ball, hxmu::RenderSurfaces, color);
        ball->SetFillAttrs(du::SmartPtr<attrs::FillAttr>(new attrs::FillAttr(SolidFill, color)));
    }
    m_leaderLine->SetSizes(LineSize, LineSize, LineSize);
}

SpinCenterAxis::~SpinCenterAxis() = default;

void SpinCenterAxis::SetPosition(const dg::DPoint3D& position) {
    m_leaderLine->GetLocation().SetPos(position);
}

}  // namespace touch
