// The parts of a session that describe a view.
#pragma once

#include "replay/session/JsonFields.h"
#include "viewer/ViewSpec.h"

#include <optional>

namespace replay {

// A view as it stands under "view" and "setView"; null has no value. Throws FieldError for anything else.
[[nodiscard]] std::optional<viewer::ViewSpec> ReadView(const Field& field);

// What stands under "viewer". Throws FieldError for anything else.
[[nodiscard]] viewer::ViewChange ReadViewChange(const Field& field);

// A set of preferences; null has no value. Throws FieldError for anything else.
[[nodiscard]] std::optional<viewer::PreferenceValues> ReadPreferences(const Field& field);

}  // namespace replay
