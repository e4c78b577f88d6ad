#!/bin/sh
# Checks that every picture and page the guide's pages point to exists: a screen grab renamed
# or a page left out would otherwise show only to a reader, as a broken picture or link.
# Usage: check_links.sh GUIDE_FOLDER
cd "$1" || exit 2
missing=$(for page in *.md; do
  grep -o '](\([^)]*\))' "$page" | sed -e 's/^](//' -e 's/)$//' -e 's/#.*//' |
    while IFS= read -r target; do
      case $target in '' | *:*) continue ;; esac
      [ -e "$target" ] || echo "  $page: $target"
    done
done)
if [ -n "$missing" ]; then
  echo "The guide points to files that are not there:"
  echo "$missing"
  exit 1
fi
echo "$(ls ./*.md | wc -l) pages, every link and picture found"
