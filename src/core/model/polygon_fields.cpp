#include "model/polygon_fields.hpp"

namespace arborex {

std::string commitPolygonField(Model& m, Prompt& prompt, int polygon, FieldRef field,
                               const std::string& text) {
    (void)prompt;
    (void)text;
    return polygonFieldText(m, polygon, field);
}

std::string polygonFieldText(const Model&, int, FieldRef) {
    return {};
}

std::string vsiText(const Model&, int) {
    return {};
}

std::string vccText(const Model&, int) {
    return {};
}

bool setPolygonValue(Model&, Prompt&, int, std::string_view, const std::string&) {
    return false;
}

std::vector<std::string> polygonValueKeys() {
    return {};
}

}  // namespace arborex
