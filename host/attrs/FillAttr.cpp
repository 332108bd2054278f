#include "host/attrs/FillAttr.h"

namespace attrs {

FillAttr::FillAttr(int style, const dg::Color& color) noexcept : m_style(style), m_color(color) {}

FillAttr::~FillAttr() = default;

}  // namespace attrs
