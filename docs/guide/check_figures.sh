#!/bin/sh
# Runs the commands whose output the guide quotes and checks that the lines quoted still come
# out of the program as printed, so that a change of the figures cannot leave the guide behind.
# Usage: check_figures.sh ARBOREX_BATCH GUIDE_FOLDER SAMPLE_PROJECT
batch=$1 guide=$2 sample=$3
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 2
cp "$guide/examples/woodlot.txt" "$sample" .
failed=0

# quote PAGE OUTPUT LINE: LINE is both in what the program printed and on the guide's PAGE.
quote() {
  if ! grep -qF -- "$3" "$2"; then
    echo "the program no longer prints: $3"
    failed=1
  elif ! grep -qF -- "$3" "$guide/$1"; then
    echo "$1 no longer quotes: $3"
    failed=1
  fi
}

"$batch" import woodlot.arx woodlot.txt > import.out 2>&1
quote importing.md import.out "$(printf '6\tPolygons Added.')"
quote importing.md import.out "Wrote woodlot.arx (6 polygons)"
"$batch" polygon woodlot.arx set "Creek 2" AREA=19.1 VSITEINDEX=20.5 > set.out 2>&1
quote editing-polygons.md set.out "      1 Creek 2           0    19.1            0          1 1, 1"
"$batch" yields woodlot.arx > yields.out 2>/dev/null
quote growth-models.md yields.out "VDYP run:  Done | Done | Done | 0 Warnings / 0 Errors"
quote growth-models.md yields.out "     3  Ridge 2       1, 1 -> 1, 3      999, 50"
"$batch" calc woodlot.arx --search --owners C --start-year 2026 --save woodlot.arx > calc.out
quote sustainable-rate.md calc.out "Harvest rate:  538 m³/yr (found by the search in 10 trials)"
quote sustainable-rate.md calc.out "Hanzlik rate:  479 m³/yr (rotation 89 years)"

"$batch" calc sample.arx --search --start-year 2026 --save searched.arx > search.out
quote sustainable-rate.md search.out "Harvest rate:  1,224 m³/yr (found by the search in 12 trials)"
quote sustainable-rate.md search.out "2276                  1,224         4.1    1,224"
"$batch" calc sample.arx --rate 1300 --start-year 2026 > rate.out
quote schedule-and-graphs.md rate.out "No Harvest for 7 years   Low Harvest for 3 years   Min Parameters not met for 1 entries"
"$batch" calc sample.arx --search --age-constraint 80 30 --start-year 2026 > age.out
quote sustainable-rate.md age.out "956 m³/yr"
"$batch" summary sample.arx > summary.out
quote harvest-parameters.md summary.out "TOTAL           375.5               Avg.                            236.7    2.9  Avg.                     228.8    3.4"
"$batch" ages sample.arx > ages.out
quote harvest-parameters.md ages.out "      0 93B045 101 0, 1      0 VDYP      84     63     45            63         84   2.69"
cp sample.arx s2.arx
"$batch" harvest-age s2.arx --polygons "93B045 101" --method 0 --amount 10 --update-1st-harvest-age > harvest-age.out
quote harvest-parameters.md harvest-age.out '  polygon 0 "93B045 101": HAR1 -1 -> 94'
"$batch" report searched.arx sample.txt > /dev/null
quote reports.md sample.txt "Minimum parameters never met"
"$batch" report woodlot.arx woodlot.rtf > /dev/null
[ -s woodlot.rtf ] || { echo "the plan of the command line wrote no report"; failed=1; }

[ $failed -eq 0 ] && echo "every figure the guide quotes comes out of the program as quoted"
exit $failed
