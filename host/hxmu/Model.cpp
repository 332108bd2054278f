// Constructors and destructors are out of line, so that the virtual tables are in the host library alone and a viewer's
// dynamic casts recognise primitives that a plug-in has made.
#include "host/hxmu/Model.h"

#include "host/hxmu/MarkupData.h"

namespace hxmu {

RenderAttrsVector::RenderAttrsVector(int renderKind, const dg::Color& renderColor) noexcept
    : color(renderColor), kind(renderKind), highlightKind(renderKind) {}

RenderAttrsVector::~RenderAttrsVector() = default;

ModelBase::ModelBase() = default;
ModelBase::~ModelBase() = default;

ModelSphere::ModelSphere(float size) : m_size(size) {}
ModelSphere::~ModelSphere() = default;

ModelLeaderLine::ModelLeaderLine(int style) : m_style(style) {}
ModelLeaderLine::~ModelLeaderLine() = default;

ModelContainer::ModelContainer() = default;
ModelContainer::~ModelContainer() = default;

MarkupData::MarkupData() = default;
MarkupData::~MarkupData() = default;

}  // namespace hxmu
