// Markups: small 3D drawings that a host lays over a view.
#pragma once

#include "host/HostApi.h"
#include "host/dg/Point.h"
#include "host/du/SmartPtr.h"
#include "host/hxk/ObjectWithRWLock.h"

#include <vector>

namespace hxmu {
class MarkupData;
}

namespace hxk {

class Preferences;
class Markup;

// Hears of changes to the content of any markup, attached to a view or not.
class HOST_API MarkupListener {
public:
    virtual ~MarkupListener();
    virtual void OnMarkupContentChanged(const Markup& markup) = 0;
};

// A markup with a type and a content tree. The operations from OnApplyPreferences on are the host's hooks; the
// defaults do nothing, answer false or null.
class HOST_API Markup : public ObjectWithRWLock {
public:
    static const ClassType CLASS_TYPE;

    ~Markup() override;
    const ClassType& GetClassType() const override;

    virtual void OnApplyPreferences(const Preferences& preferences);
    // Whether the markup is left out when the view is saved.
    virtual bool IsEphemeral() const;
    // Whether picking passes through it.
    virtual bool IgnorePickFilter() const;
    virtual void OnSetSelected(bool selected);
    virtual void OnChildSetSelected(bool selected);
    virtual void OnRemovedFromHolder();
    virtual void OnSetVisibility(bool visible);
    virtual void DoPreDrawFixup();
    virtual void Translate(const dg::DVec3& offset);
    virtual void SetAssociationHighlighted(bool highlighted);
    virtual du::SmartPtr<Markup> ConstructShadow() const;
    virtual du::SmartPtr<Markup> GetShadow() const;
    // The end points of lines that follow the markup while it is dragged.
    virtual std::vector<dg::DPoint3D> GetRubberBands() const;

    // Replaces the content; the second argument says whether it is drawn at once.
    void SetContent(const du::SmartPtr<hxmu::MarkupData>& content, bool visible);
    [[nodiscard]] const du::SmartPtr<hxmu::MarkupData>& GetContent() const noexcept { return m_content; }
    [[nodiscard]] bool IsVisible() const noexcept { return m_visible; }
    // The host's number for what the markup is: 4 is navigation feedback, drawn in front of the model.
    void SetType(unsigned int type) noexcept { m_type = type; }
    [[nodiscard]] unsigned int GetType() const noexcept { return m_type; }

    // Tells the listener, if any, that the content tree was changed in place.
    void NotifyContentChanged();
    // Sets the listener for the process; null takes it away. Not owned: it must outlive its use.
    static void SetListener(MarkupListener* listener) noexcept;

protected:
    Markup();

private:
    du::SmartPtr<hxmu::MarkupData> m_content;
    unsigned int m_type = 0;
    bool m_visible = false;
};

}  // namespace hxk
