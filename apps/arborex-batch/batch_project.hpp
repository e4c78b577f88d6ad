#pragma once
// What every command that reads a project does first: check its operands, make a model with
// the program's defaults and the reference data, and load the project through the batch host.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <string>

#include "batch_args.hpp"
#include "batch_host.hpp"
#include "model/model.hpp"

namespace arborex::batch {

inline constexpr const char* kProgram = "arborex-batch";

// Throws UsageError, quoting the command's `form`, unless there are exactly `count` operands,
// none of them empty.
void requireOperands(const BatchOptions& options, std::size_t count, const std::string& form);

// A fresh model with the program's defaults and the reference data of --data (else the
// installed one), as the desktop program has it before a load. Throws ArborexError
// ErrFileNotFound when that folder has no species table of TIPSY.
std::unique_ptr<Model> newModel(BatchHost& batch, const BatchOptions& options);

// LoadARX through the batch host. On failure writes the one line "arborex-batch: cannot load
// <path>: <reason>" to `err`, the reason taken from the box that the failed load showed, and
// returns false.
bool loadProject(Model& m, BatchHost& batch, const std::string& path, std::ostream& err);

// SaveArx in file version `version` through the batch host. On failure writes the one line
// "arborex-batch: cannot save <path>: <reason>" to `err` and returns false.
bool saveProject(Model& m, BatchHost& batch, const std::string& path, int16_t version,
                 std::ostream& err);

// POLYGON of a command line: the first polygon, deleted ones too, whose trimmed name equals
// `operand` trimmed, without regard to case, else its index 0..LastPoly. Anything else throws
// UsageError naming `path`.
int16_t polygonOperand(const Model& m, const std::string& operand, const std::string& path);

// The reason of a failure: its text, and its detail unless that only names `path` (or the
// temporary file a save writes beside it), which the line names already.
// A batch run has no documents folder of its own: new polygons start from the installed
// default polygon, or follow the project's settings when there is none.
void useInstalledDefaultPolygon(Model& m, Host& host);

std::string failureReason(const std::exception_ptr& failure, const std::string& path);

}  // namespace arborex::batch
