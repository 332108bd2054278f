// The views of a viewer. A host implements these classes; everything that reads or moves a view goes through them.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Camera3D.h"
#include "host/dg/Location.h"
#include "host/dg/Point.h"
#include "host/du/SmartPtr.h"
#include "host/du/Symbol.h"
#include "host/hxk/AsyncEvent.h"
#include "host/hxk/MarkupHolder.h"
#include "host/hxk/Object.h"
#include "host/hxk/Observable.h"
#include "host/hxk/Preferences.h"
#include "host/hxk/Scene.h"

namespace hxk {

// Class numbers of three 2D view kinds that have no class type of their own here.
inline constexpr unsigned int EcadSchematicViewId = 75;
inline constexpr unsigned int EcadPcbViewId = 78;
inline constexpr unsigned int SchematicFigureViewId = 127;

// Any view.
class HOST_API View : public Object, public Observable {
public:
    static const ClassType CLASS_TYPE;

    ~View() override;
    const ClassType& GetClassType() const override;

    // The scene that shows this view; null when there is none.
    virtual void GetScene(du::SmartPtr<Scene>& scene) const = 0;
    // The view's preference set. False, with null in `preferences`, when it has none.
    virtual bool GetDefaultPreferences(du::SmartPtr<Preferences>& preferences) = 0;
};

// The 3D view.
class HOST_API ShapeView : public View, public MarkupHolder {
public:
    static const ClassType CLASS_TYPE;

    ~ShapeView() override;
    const ClassType& GetClassType() const override;

    // Copies the current camera.
    virtual void GetCamera(dg::Camera3D& camera) const = 0;
    // The world point about which spinning turns the model.
    virtual void GetSpinCenter(dg::DPoint3D& center) const = 0;
    // The name of the navigation method; "explore" flies through the model.
    virtual const du::Symbol& GetNavMethod() const = 0;
    // A factor on navigation steps; 1 is normal.
    virtual double GetNavSpeed() const = 0;
    // Starts computing the bounding box of the model and completes the request later, never before this returns. The
    // flags ask for (first) selected parts only and (second) visible parts only. The request stays the caller's.
    virtual void GetBoundingBox(bool selectedOnly, bool visibleOnly, BoundingBoxEvent* request) = 0;
    // Moves the camera at once.
    virtual void SetCameraLocation(const dg::Location& location) = 0;
    // Sets the visible width of an orthographic camera, in model units: the window becomes that wide about its own
    // centre and its height scales by the same factor. Fills `change` with a record of the change, or null.
    virtual void SetOrthographicWidth(double width, du::SmartPtr<du::RefCounted>& change) = 0;
};

// A 2D page.
class HOST_API View2D : public View {
public:
    static const ClassType CLASS_TYPE;

    ~View2D() override;
    const ClassType& GetClassType() const override;

    // The visible width in model units.
    virtual void GetOrthoWidth(double& width) const = 0;
    virtual void SetOrthoWidth(double width) = 0;
    // Sets the centre of the visible area.
    virtual void SetPosition(const dg::DPoint3D& position) = 0;
    // The size of the view in pixels.
    virtual void GetViewSize(unsigned int& width, unsigned int& height) const = 0;
    // The view's placement: U to the right, V up, and the centre of the visible area.
    virtual void GetViewLocation(dg::Location& location) const = 0;
};

class HOST_API DrawingView : public View2D {
public:
    static const ClassType CLASS_TYPE;
    ~DrawingView() override;
    const ClassType& GetClassType() const override;
};

class HOST_API ImageView : public View2D {
public:
    static const ClassType CLASS_TYPE;
    ~ImageView() override;
    const ClassType& GetClassType() const override;
};

class HOST_API DocumentView : public View2D {
public:
    static const ClassType CLASS_TYPE;
    ~DocumentView() override;
    const ClassType& GetClassType() const override;
};

}  // namespace hxk
