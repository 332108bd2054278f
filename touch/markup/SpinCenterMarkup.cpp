// The spin-centre cross and its creation. Tested by tests/component/SpinCenterMarkupTest.cpp.
#include "touch/markup/SpinCenterMarkup.h"

#include "host/hxmu/MarkupData.h"
#include "host/hxmu/Model.h"
#include "touch/TouchWorkflow.h"

namespace touch {
namespace {

constexpr unsigned int NavigationFeedback = 4;  // the host's markup type

}  // namespace

SpinCenterMarkup::SpinCenterMarkup(const dg::DPoint3D& center) {
    SetType(NavigationFeedback);
    m_axisX = new SpinCenterAxis(0, dg::DPoint3D::ORIGIN);
    m_axisY = new SpinCenterAxis(1, dg::DPoint3D::ORIGIN);
    m_axisZ = new SpinCenterAxis(2, dg::DPoint3D::ORIGIN);
    MoveSpinCenterMarkup(center);
    const du::SmartPtr<hxmu::ModelContainer> axes(new hxmu::ModelContainer);
    axes->AddHead(m_axisX->GetLeaderLine());
    axes->AddHead(m_axisY->GetLeaderLine());
    axes->AddHead(m_axisZ->GetLeaderLine());
    const du::SmartPtr<hxmu::MarkupData> content(new hxmu::MarkupData);
    content->SetModelBase(axes);
    SetContent(content, true);
}

SpinCenterMarkup::~SpinCenterMarkup() = default;

void SpinCenterMarkup::MoveSpinCenterMarkup(const dg::DPoint3D& center) {
    m_axisX->SetPosition(center);
    m_axisY->SetPosition(center);
    m_axisZ->SetPosition(center);
}

void TouchWorkflow::AddSpinCenterMarkup() {
    const du::SmartPtr<hxk::ShapeView> view(dynamic_cast<hxk::ShapeView*>(GetView().Get()));
    if (!view) {
        return;
    }
    dg::DPoint3D center;
    view->GetSpinCenter(center);
    m_spinCenterMarkup = new SpinCenterMarkup(center);
}

}  // namespace touch
