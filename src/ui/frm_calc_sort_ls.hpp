#pragma once
// "Sort by Lead Species": the user ranks the lead species of the harvest order; the species on
// top is cut first. OK gives the ranking, Cancel gives nothing (the sort then reuses the keys of
// the sort before, which is how the order list has always behaved).

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

class QListWidget;

namespace arborex {

class frmCalcSortLS final : public QDialog {
    Q_OBJECT
public:
    // `species`: the lead species in order of first appearance, as Latin-1 texts.
    explicit frmCalcSortLS(const std::vector<std::string>& species, QWidget* parent = nullptr);

    // The species as they stand in the list, top first.
    std::vector<std::string> ranking() const;

    // Shows the dialog modally over `parent`: the ranking on OK, nullopt on Cancel.
    static std::optional<std::vector<std::string>> rank(const std::vector<std::string>& species,
                                                        QWidget* parent);

private:
    // 0 Top, 1 Up, 2 Down, 3 Bottom; the moved row stays selected.
    void cmdMove_Click(int index);

    QListWidget* lstSpec_;
};

}  // namespace arborex
