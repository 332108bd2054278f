// Coasting: a spin that is released while the model still turns fast goes on for a moment. Decides how fast it turns:
// every tick's own rotation, never a sum of them. On release the host gets a transition that carries the camera one
// sampled rotation further. Tested by tests/component/SpinAnimationTest.cpp.
#include "touch/TouchWorkflow.h"
#include "touch/navigation/CameraMoves.h"
#include "touch/navigation/CameraSpinTransition.h"

namespace touch {

// The share 50 ms / interval of the way from the tick's rotation to none: a 50 ms tick gives none, shorter ticks go
// past it and give the reversed rotation, which is what turns the camera on the way the finger went.
void TouchWorkflow::SampleSpinVelocity(std::int64_t elapsed) {
    if (!m_viewChanged || !m_spinInertia || elapsed <= 0 || m_firstFingerId == FreeSlotId) {
        return;
    }
    const TouchState* finger = MatchSlot(m_firstFingerId);
    if (finger == nullptr) {
        return;
    }
    const dg::Quaternion<float> rotation =
        m_velocityTrackball.Drag(dg::DPoint3D(finger->currentX, finger->currentY, 0));
    m_spinVelocity = SlerpQuaternion(rotation, {}, VelocitySampleMs / static_cast<float>(elapsed));
}

void TouchWorkflow::StartSpinAnimation() {
    if (GetManagerCore() == nullptr) {
        return;
    }
    dg::Camera3D camera;
    m_frame.GetShapeView().GetCamera(camera);
    du::SmartPtr<hxk::Scene> scene;
    m_frame.GetShapeView().GetScene(scene);
    // Each call may take the manager away, and the host then destroys it.
    if (workflow::WorkflowManagerCore* manager = GetManagerCore()) {
        manager->StopTransition();
    }
    std::int64_t context = 0;
    if (workflow::WorkflowManagerCore* manager = GetManagerCore()) {
        context = manager->GetTransitionContext(0);
    }
    const dg::Location start = camera.GetLocation();
    const dg::Location end = TurnAbout(m_spinCenter, m_spinVelocity, start);

    const du::SmartPtr<animation::CameraSpinTransition> spin(new animation::CameraSpinTransition);
    spin->startDelay = 0;
    spin->duration = CoastDurationMs;
    spin->scene = scene;
    spin->view = &m_frame.GetShapeView();
    spin->start = start;
    spin->end = end;
    spin->spinCenter = m_spinCenter;
    du::SmartPtr<workflow::TransitionQueue> queue;
    if (workflow::WorkflowManagerCore* manager = GetManagerCore()) {
        manager->GetTransitionQueue(queue);
    }
    if (queue) {
        queue->AddTransition(spin, context);
    }
}

void TouchWorkflow::ApplyGestureCamera(const dg::Location& location) {
    m_frame.GetShapeView().SetCameraLocation(location);
    m_viewChanged = true;
}

}  // namespace touch
