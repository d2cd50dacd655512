# Sourced: Debian packages.

# Installs what packages.txt names and the system lacks. Asks nothing; touches nothing when all is there.
install_packages() {
  local package as_root='' missing=''
  for package in $(sed 's/#.*//' "$root/packages.txt"); do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing="$missing $package"
  done
  [ -n "$missing" ] || return 0

  say "Installing:$missing"
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || die "these packages are missing and neither root nor sudo is at hand:$missing"
    as_root='sudo -n'
  fi
  # A machine that has never fetched the package lists needs them first; one with old lists after a failure.
  apt_install() { $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing </dev/null >&2; }
  if ! apt_install; then
    $as_root apt-get update </dev/null >&2
    apt_install
  fi || die "could not install:$missing"
}
