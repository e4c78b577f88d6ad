#pragma once
// What the polygon screen and its small screens share: sizes, captions, the list of polygon
// names, and the lookups that find the list entry showing a polygon's value.

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QString>
#include <string>
#include <vector>

#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "model/model.hpp"

namespace arborex::polygon_screen {

constexpr int kNumberWidth = 58;
constexpr int kCodeWidth = 34;
constexpr int kPercentWidth = 42;

inline const PolyData& polyOf(const Model& m, int p) {
    return m.Poly[static_cast<std::size_t>(p)];
}

// The entry of a list whose text is the polygon's value, compared trimmed.
inline int entryIndex(const std::vector<std::string>& entries, const std::string& value) {
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (trim(entries[i]) == value) return static_cast<int>(i);
    return -1;
}

// The entry of a utilization list that reads as the polygon's level.
inline int levelIndex(const std::vector<std::string>& entries, float level) {
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (toF4(tolerantNumber(entries[i])) == level) return static_cast<int>(i);
    return -1;
}

inline QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return label;
}

// A caption in the grid's first column and its field beside it.
inline void addRow(QGridLayout* grid, int row, const QString& text, QWidget* field) {
    grid->addWidget(caption(text, field->parentWidget()), row, 0);
    grid->addWidget(field, row, 1);
}

inline QLabel* columnTitle(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

inline QLabel* sumLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setContentsMargins(0, 0, 6, 0);
    return label;
}

// A list of the polygons whose DELETE is `deleted`, by trimmed name, each with its index as
// item data.
inline QListWidget* polygonNameList(const char* name, const Model& m, int16_t deleted,
                                    QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setUniformItemSizes(true);
    list->setMinimumHeight(220);
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (m.PolyC[static_cast<std::size_t>(p)].DELETE != deleted) continue;
        auto* item = new QListWidgetItem(
            QString::fromLatin1(m.Poly[static_cast<std::size_t>(p)].NAME.str()), list);
        item->setData(Qt::UserRole, p);
    }
    return list;
}

inline QString indexed(const char* name, int index) {
    return QString("%1_%2").arg(name).arg(index);
}

}  // namespace arborex::polygon_screen
