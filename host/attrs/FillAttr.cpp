// The destructor is out of line, so that the class's virtual table is in the host library alone.
#include "host/attrs/FillAttr.h"

namespace attrs {

FillAttr::FillAttr(int style, const dg::Color& color) noexcept : m_style(style), m_color(color) {}

FillAttr::~FillAttr() = default;

}  // namespace attrs
