# Sourced: configuring, compiling, and laying out the folder that ships.

# The targets of which that folder is made.
shipping='Quillet SMS_DLL2 findport languages'

# build_preset native|native-release|mingw|… [TARGET…]
build_preset() {
  hold "build-$1" bash -eu -c '
    cd "$1"
    [ -f "out/$2/build.ninja" ] || cmake --preset "$2" >&2
    preset=$2
    shift 2
    cmake --build --preset "$preset" ${1:+--target "$@"} >&2
  ' build "$root" "$@" || { say "The $1 build failed."; return 1; }
}

# ship SOURCE NAME puts one file into the shipped folder. A running program keeps the file it has open.
ship() {
  [ -f "$root/$1" ] || { say "Missing: $1, which ships as $2."; return 1; }
  mkdir -p "$(dirname "$shipped/$2")"
  cp --remove-destination "$root/$1" "$shipped/$2"
}

# The same for a file that a person may change: a changed one stays.
as_shipped=$out/as_shipped
ship_unless_changed() {
  local last=$as_shipped/$2
  if [ -f "$shipped/$2" ] && ! cmp -s "$shipped/$2" "$last"; then
    cmp -s "$shipped/$2" "$root/$1" || say "Kept your $2."
  else
    ship "$1" "$2" || return 1
  fi
  mkdir -p "$as_shipped"
  cp "$root/$1" "$last"
}

# ship_languages FOLDER ships the texts of each language that was built there; one that somebody added stays.
ship_languages() {
  local file tag
  for file in "$root"/languages/*.rc; do
    tag=$(basename "$file" .rc)
    ship "$1/$tag/zelSMS.dll" "Languages/$tag/zelSMS.dll" || return 1
  done
}

# The manual as one page for a browser, with what it refers to. Only the system's own Python is sure to have the
# package for it.
make_manual() {
  (cd "$root/docs" && /usr/bin/python3 -B "$root/scripts/manual.py" manual.md real-handset.md simulated-handset.md) \
    >"$out/manual.html" || { say 'The manual could not be made.'; return 1; }
}

# lay_out [PRESET] lays out dist/Quillet. Message stores, and a changed port.ini or handset.txt, stay.
lay_out() {
  local built=out/${1:-mingw}
  mkdir -p "$out" "$shipped"
  printf '[port]\r\ncom=0\r\n' > "$out/port.ini"
  ship $built/src/app/Quillet.exe Quillet.exe &&
    ship $built/handset/SMS_DLL2.dll SMS_DLL2.dll &&
    ship $built/handset/findport.exe findport.exe &&
    ship_languages $built/languages &&
    make_manual && ship out/manual.html manual.html &&
    ship LICENSE LICENSE.txt &&
    ship_unless_changed out/port.ini port.ini &&
    ship_unless_changed handset/handset.txt handset.txt || return 1
  [ -f "$root/assets/Skin/Default/SMS/skin.ini" ] || { say "Missing: assets/Skin/Default/SMS/skin.ini."; return 1; }
  rm -rf "$shipped/Skin/Default/SMS"
  mkdir -p "$shipped/Skin/Default/SMS"
  cp -R "$root/assets/Skin/Default/SMS/." "$shipped/Skin/Default/SMS/"
}
