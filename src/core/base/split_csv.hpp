#pragma once
// Splitting of one line of a delimited file, as the classic polygon import and the command line
// read it.

#include <string>
#include <string_view>
#include <vector>

namespace arborex {

// Splits `line` at `delimiter` and returns the number of the last field, 0 for a line that is
// empty once trimmed. The fields go to CsvFields[1] onwards; CsvFields[0] is unused and left
// empty, and the vector is resized to hold exactly the fields.
//
// A double quote outside quotes opens a quoted part, in which the delimiter is an ordinary
// character and "" stands for one double quote; a lone double quote closes it. Quotes may open
// anywhere in a field, and their text joins the field.
//
// Each field is trimmed of outer blanks (blanks inside quotes as well), because the classic
// writer separates fields by ", " while the reader splits at "," alone.
int SplitCSV(std::string_view line, char delimiter, std::vector<std::string>& CsvFields);

}  // namespace arborex
