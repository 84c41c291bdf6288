# Shared set-up of quillon.sh and test.sh: installs the Debian packages the
# build needs (when run as root) and builds everything into build/.
# Sourced, not run.

QUILLON_PACKAGES="cmake g++ make qt6-base-dev libqt6sql6-sqlite libgtest-dev xvfb"

quillon_missing_packages() {
    local missing=""
    for pkg in $QUILLON_PACKAGES; do
        if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
            missing="$missing $pkg"
        fi
    done
    echo "$missing"
}

quillon_install_packages() {
    local missing
    missing="$(quillon_missing_packages)"
    [ -z "$missing" ] && return 0
    if [ "$(id -u)" = "0" ]; then
        echo "Installing:$missing"
        export DEBIAN_FRONTEND=noninteractive
        apt-get update -q
        apt-get install -y -q $missing
    else
        echo "Quillon needs these packages:$missing"
        echo "Install them with:"
        echo "    sudo apt-get install -y$missing"
        exit 1
    fi
}

quillon_build() {
    local jobs
    jobs="$(nproc 2>/dev/null || echo 2)"
    cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build build -j"$jobs"
}
