#include "model/colours.hpp"

#include "model/model.hpp"

namespace arborex {

const char* const kColourKeys[20] = {"AGE",       "DIA",      "VOL",       "MAI",      "MATURE",
                                     "IMATURE",   "AMATURE",  "AIMATURE",  "HMATURE",  "HIMATURE",
                                     "NMATURE",   "NIMATURE", "MATURED",   "IMATURED", "AMATURED",
                                     "AIMATURED", "HMATURED", "HIMATURED", "NMATURED", "NIMATURED"};

void setColours(Model& m) {
    m.Settings.COLORS = {rgb(255, 0, 0),  rgb(0, 0, 255),   rgb(0, 255, 0),   rgb(0, 255, 255),
                         rgb(0, 127, 0),  rgb(0, 255, 0),   rgb(127, 127, 0), rgb(255, 255, 0),
                         rgb(127, 0, 0),  rgb(255, 0, 0),   rgb(0, 0, 127),   rgb(0, 0, 255),
                         rgb(64, 127, 0), rgb(127, 255, 0), rgb(127, 127, 0), rgb(255, 255, 0),
                         rgb(127, 0, 0),  rgb(255, 0, 0),   rgb(0, 0, 127),   rgb(0, 0, 255)};
}

}  // namespace arborex
