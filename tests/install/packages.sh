#!/usr/bin/env bash
# packages.sh <folder with the packages> <source tree> <folder to work in>
# Installs the Debian packages on this machine, builds programs with them and runs them, and takes the packages away
# again. By root or with sudo, and on a virtual display.
set -euo pipefail
packages=$1 source=$2 work=$3
as_root=()
((EUID == 0)) || as_root=(sudo)

die() {
    echo "packages: $*" >&2
    exit 1
}

rm -rf "$work"
mkdir -p "$work/hello"
names=()
for package in "$packages"/*.deb; do
    names+=("$(dpkg-deb --field "$package" Package)")
    [[ $(dpkg-query -W -f='${Status}' "${names[-1]}" 2>/dev/null) != *' installed' ]] || die "${names[-1]} is installed already"
    dpkg-deb --fsys-tarfile "$package" | tar -t | sed 's|^\.||; /\/$/d' >>"$work/files"
done
((${#names[@]} == 4)) || die "not the four packages that were expected: ${names[*]}"
trap '"${as_root[@]}" dpkg --purge "${names[@]}" >/dev/null' EXIT
"${as_root[@]}" dpkg --install "$packages"/*.deb >"$work/install.log" 2>&1 || die "not installed: $(<"$work/install.log")"

# The program that the README begins with.
awk '/^```cpp$/ { if (!n++) on = 1; next } /^```$/ { on = 0 } on' "$source/README.md" >"$work/hello/main.cpp"
awk '/^```cmake$/ { if (!n++) on = 1; next } /^```$/ { on = 0 } on' "$source/README.md" >"$work/hello/CMakeLists.txt"
cmake -S "$work/hello" -B "$work/hello/build" >"$work/hello.log"
cmake --build "$work/hello/build" >>"$work/hello.log" || die "the README's program was not built: $(<"$work/hello.log")"
[[ $(ldd "$work/hello/build/hello") == *libzkogl_zkoglcanvas.so.* ]] || die "the README's program uses no shared library"
status=0
timeout 3 "$work/hello/build/hello" || status=$?
((status == 124)) || die "the README's program ended by itself: $status"

# With pkg-config, as there is no search path to be told.
g++ -std=c++20 -fPIC "$source/tests/install/consumer/components.cpp" -o "$work/components" $(pkg-config --cflags --libs zkogl)
[[ $(QT_QPA_PLATFORM=offscreen "$work/components") == *"box1 stands in scene1"* ]] || die "the form was not read"
g++ -std=c++20 "$source/tests/install/consumer/geometry.cpp" -o "$work/geometry" $(pkg-config --cflags --libs zkogl-geometry)
[[ $("$work/geometry") == *"told: Normalvektor 0"* ]] || die "an error did not come through"
[[ $(ldd "$work/geometry") != *Qt* ]] || die "the geometry layer needs Qt"

zkogl-doctor >"$work/doctor" || die "zkogl-doctor: $(<"$work/doctor")"
plugin=$(grep /designer/ "$work/files")
cat >"$work/load.cpp" <<'CPP'
#include <QCoreApplication>
#include <QPluginLoader>
int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QPluginLoader plugin(argv[1]);
    if (!plugin.load())
        qFatal("%s", qPrintable(plugin.errorString()));
    return plugin.instance() ? 0 : 1;
}
CPP
g++ -std=c++20 -fPIC "$work/load.cpp" -o "$work/load" $(pkg-config --cflags --libs Qt6Core)
"$work/load" "$plugin" || die "the plugin of Qt Designer cannot be loaded"

trap - EXIT
"${as_root[@]}" dpkg --remove "${names[@]}" >"$work/remove.log" 2>&1 || die "not removed: $(<"$work/remove.log")"
while read -r file; do
    [[ ! -e $file && ! -L $file ]] || die "$file is left"
done <"$work/files"
for folder in /usr/include/zkogl /usr/libexec/zkogl /usr/lib/*/cmake/ZKOgl; do
    [[ ! -e $folder ]] || die "$folder is left"
done
"${as_root[@]}" dpkg --purge "${names[@]}" >>"$work/remove.log" 2>&1
[[ -z $(dpkg-query -W "${names[@]}" 2>/dev/null) ]] || die "dpkg still knows the packages"
echo "The packages ${names[*]} install, serve and go."
