# Sourced: what is handed out. The same sources give the same bytes, whenever and wherever they are packed.

staged=$out/package  # a folder for each edition, and the list of files for the setup

preset_of() { case $1 in x64) echo mingw ;; x86) echo mingw-x86 ;; esac; }

# stage EDITION lays that edition out as nobody has used it yet, with the time of the last commit everywhere.
stage() {
  local shipped=$staged/$1/Quillet as_shipped=$staged/$1/as_shipped
  rm -rf "${staged:?}/$1"
  lay_out "$(preset_of "$1")" || return 1
  # What the compiler's runtime, which is inside every program, asks of those who pass it on.
  cp /usr/share/doc/mingw-w64-common/copyright "$shipped/LICENSE-runtime.txt"
  find "$shipped" -type f -exec chmod 644 {} + -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
}

# The staged files and folders as calls of two macros of the setup. Quillet.exe stands there itself.
list_for_setup() {
  local kind folder file
  echo '!macro files always unlessChanged'
  (cd "$staged/x64/Quillet" && find . -type f ! -name Quillet.exe -printf '%P\n') | sort | while IFS= read -r file; do
    case $file in SMS_DLL2.dll | port.ini | handset.txt | Skin/*) kind=unlessChanged ;; *) kind=always ;; esac
    folder=''
    [[ $file != */* ]] || folder=${file%/*}/
    # shellcheck disable=SC2016 # a macro of the setup
    printf '  !insertmacro ${%s} "%s" "%s"\n' $kind "${folder//\//\\}" "${file##*/}"
  done
  printf '!macroend\n!macro folders each\n'
  (cd "$staged/x64/Quillet" && find . -mindepth 1 -type d -printf '%P\n') | sort -r | tr / '\\' |
    sed 's/.*/  !insertmacro ${each} "&"/'
  echo '!macroend'
}

# make_packages FOLDER EDITION… makes a portable folder of each edition, the setup and their checksums there. The
# programs are built.
make_packages() {
  local folder=$1 version edition package
  shift
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$out/mingw/CMakeCache.txt")
  package=$folder/Quillet-$version
  # Without a history whoever packs says the time.
  [ -n "${SOURCE_DATE_EPOCH:-}" ] || SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct) || return 1
  export SOURCE_DATE_EPOCH
  mkdir -p "$folder"
  rm -f "$folder"/Quillet-*.zip "$folder"/Quillet-*-setup.exe "$folder/SHA256SUMS"
  for edition; do
    stage "$edition" || return 1
    (cd "$staged/$edition" && find Quillet -type f | sort | TZ=UTC zip -X -9 -q -@ "$package-$edition.zip") || return 1
  done
  list_for_setup >"$staged/files.nsh"
  makensis -V2 -WX -DVERSION="$version" -DROOT="$root" -DTARGET="$package-setup.exe" -DSTAGED="$staged" \
    ${2:+-DX86} "$root/packaging/quillet.nsi" >&2 || return 1
  (cd "$folder" && sha256sum Quillet-* >SHA256SUMS)
}
