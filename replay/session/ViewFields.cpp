// Which keys a view may have depends on its kind: one of another kind is a fault. A change of a view takes some of the
// keys of a shape view and requires none.
#include "replay/session/ViewFields.h"

#include <algorithm>
#include <array>
#include <string>

namespace replay {

namespace {

dg::DPoint3D ReadPoint(const Field& field) {
    const std::array<double, 3> p = ReadDoubles<3>(field);
    return {p[0], p[1], p[2]};
}

dg::FVec3 ReadAxis(const Field& field) {
    ExpectArray(field, 3, "an array of 3 numbers");
    return {ReadFloat(field.At(0)), ReadFloat(field.At(1)), ReadFloat(field.At(2))};
}

dg::DBox ReadBounds(const Field& field) {
    if (field.value->is_null()) {
        return {};
    }
    ExpectArray(field, 2, "null or the two corners [[x, y, z], [x, y, z]]");
    return {ReadPoint(field.At(0)), ReadPoint(field.At(1))};
}

viewer::CameraSpec ReadCamera(const Field& field) {
    const ObjectFields fields(field, {"orthographic", "window", "distance", "u", "v", "w", "position"});
    viewer::CameraSpec camera;
    camera.orthographic = ReadBool(fields.Get("orthographic"));
    const std::array<double, 4> window = ReadDoubles<4>(fields.Get("window"));
    camera.left = window[0];
    camera.right = window[1];
    camera.bottom = window[2];
    camera.top = window[3];
    camera.distance = ReadDouble(fields.Get("distance"));
    camera.location = dg::Location(ReadAxis(fields.Get("u")), ReadAxis(fields.Get("v")), ReadAxis(fields.Get("w")),
                                   ReadPoint(fields.Get("position")));
    return camera;
}

dg::Location ReadPlacement(const ObjectFields& fields) {
    const dg::Location standard;
    const std::optional<Field> u = fields.Find("u");
    const std::optional<Field> v = fields.Find("v");
    const std::optional<Field> w = fields.Find("w");
    const std::optional<Field> position = fields.Find("position");
    return {u ? ReadAxis(*u) : standard.GetU(), v ? ReadAxis(*v) : standard.GetV(), w ? ReadAxis(*w) : standard.GetW(),
            position ? ReadPoint(*position) : standard.GetPos()};
}

// The keys that a shape view and a change of it share.
viewer::ViewChange ReadShapeKeys(const ObjectFields& fields) {
    viewer::ViewChange change;
    if (const auto camera = fields.Find("camera")) {
        change.camera = ReadCamera(*camera);
    }
    if (const auto center = fields.Find("spinCenter")) {
        change.spinCenter = ReadPoint(*center);
    }
    if (const auto bounds = fields.Find("bounds")) {
        change.bounds = ReadBounds(*bounds);
    }
    if (const auto method = fields.Find("navMethod")) {
        change.navMethod = ReadString(*method);
    }
    if (const auto speed = fields.Find("navSpeed")) {
        change.navSpeed = ReadDouble(*speed);
    }
    return change;
}

std::string ReadKind(const Field& view) {
    if (!view.value->is_object()) {
        throw view.Expected("a view or null");
    }
    const auto kind = view.value->find("kind");
    if (kind == view.value->end()) {
        throw FieldError(view.path + ".kind: the key is missing");
    }
    const Field field{&*kind, view.path + ".kind"};
    std::string name = ReadString(field);
    if (std::find(viewer::ViewKinds.begin(), viewer::ViewKinds.end(), name) == viewer::ViewKinds.end()) {
        throw FieldError(field.path + ": unknown kind of view " + Quoted(name));
    }
    return name;
}

ObjectFields KeysOfKind(const Field& view, const std::string& kind) {
    if (viewer::IsShapeViewKind(kind)) {
        return {view, {"kind", "size", "preferences", "camera", "spinCenter", "bounds", "navMethod", "navSpeed"}};
    }
    if (viewer::Is2DViewKind(kind)) {
        return {view, {"kind", "size", "preferences", "width", "u", "v", "w", "position"}};
    }
    return {view, {"kind", "size", "preferences"}};
}

void ReadShapeView(const ObjectFields& fields, viewer::ViewSpec& view) {
    (void)fields.Get("camera");
    const viewer::ViewChange given = ReadShapeKeys(fields);
    view.camera = *given.camera;
    view.spinCenter = given.spinCenter.value_or(view.spinCenter);
    view.bounds = given.bounds.value_or(view.bounds);
    view.navMethod = given.navMethod.value_or(view.navMethod);
    view.navSpeed = given.navSpeed.value_or(view.navSpeed);
}

}  // namespace

std::optional<viewer::ViewSpec> ReadView(const Field& field) {
    if (field.value->is_null()) {
        return std::nullopt;
    }
    viewer::ViewSpec view;
    view.kind = ReadKind(field);
    const ObjectFields fields = KeysOfKind(field, view.kind);
    const Field size = fields.Get("size");
    ExpectArray(size, 2, "width and height in pixels");
    view.width = ReadUInt32(size.At(0));
    view.height = ReadUInt32(size.At(1));
    if (const auto preferences = fields.Find("preferences")) {
        view.preferences = ReadPreferences(*preferences);
    }
    if (viewer::IsShapeViewKind(view.kind)) {
        ReadShapeView(fields, view);
    } else if (viewer::Is2DViewKind(view.kind)) {
        view.orthoWidth = ReadDouble(fields.Get("width"));
        view.placement = ReadPlacement(fields);
    }
    return view;
}

viewer::ViewChange ReadViewChange(const Field& field) {
    return ReadShapeKeys(ObjectFields(field, {"camera", "spinCenter", "bounds", "navMethod", "navSpeed"}));
}

std::optional<viewer::PreferenceValues> ReadPreferences(const Field& field) {
    if (field.value->is_null()) {
        return std::nullopt;
    }
    if (!field.value->is_object()) {
        throw field.Expected("an object of true or false values, or null");
    }
    viewer::PreferenceValues values;
    for (const auto& [key, value] : field.value->items()) {
        values[key] = ReadBool({&value, field.path + "." + Quoted(key)});
    }
    return values;
}

}  // namespace replay
