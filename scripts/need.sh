# Installs Debian packages that are missing: need PACKAGE…
need() {
    local package missing=() sudo=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    echo "Installing ${missing[*]}" >&2
    "${sudo[@]}" apt-get update -q >&2
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -yq --no-install-recommends "${missing[@]}" >&2
}
