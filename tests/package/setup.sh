#!/usr/bin/env bash
# setup.sh PACKAGES BIN VERSION WINEPREFIX: installs, imports with the installed plug-in, upgrades and uninstalls, in a
# separate Wine prefix.
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../artifacts/expect.sh"
packages=$1 bin=$2 version=$3
export WINEPREFIX=$4 WINEARCH=win64 WINEDEBUG=-all,err+virtual WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
setup=$packages/ImporterQuorvane-$version-setup.exe

[ -f "$setup" ] || { echo "no installer: run cmake --build --preset package first"; exit 1; }
rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
trap 'wineserver -k >/dev/null 2>&1' EXIT
# Wine's services must not keep this test's output open, so they are started here without output.
wine wineboot --init >/dev/null 2>&1 </dev/null

programs="$WINEPREFIX/drive_c/Program Files"
support=$programs/ImporterQuorvane
apps='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\ImporterQuorvane'
user=("$WINEPREFIX"/drive_c/users/*/quorvane)

# run PROGRAM ARGUMENTS...: prints its exit code.
run() {
    timeout 120 wine "$@" >/dev/null 2>&1 </dev/null
    echo $?
}
app_value() { wine reg query "$apps" /v "$1" 2>/dev/null | tr -d '\r' | awk -v name="$1" '$1 == name { $1 = $2 = ""; print substr($0, 3) }'; }
host_says() { run reg add "HKLM\\Software\\Adobe\\Premiere Pro\\$1" /v CommonPluginInstallPath /d "$2" /f >/dev/null; }
there() { [ -e "$1" ] && echo there || echo missing; }
# Every file, and all our registry values: an uninstall must restore this state.
traces() {
    (cd "$programs" && find . | sort)
    find "$WINEPREFIX"/drive_c/users -ipath '*quorvane*'
    wine reg query "$apps" 2>/dev/null
    wine reg query 'HKCU\Software\Quorvane' 2>/dev/null
}
uninstall() {
    local code tries
    code=$(run "$support/uninstall.exe" /S)
    # The uninstaller continues as a copy of itself.
    for tries in $(seq 100); do
        [ -e "$support" ] || break
        sleep 0.1
    done
    echo "$code"
}

# --- a first installation: the newest host's folder, in the spelling that exists

new_folder="$programs/Adobe/Common/Plugins/7.0/MediaCore"
mkdir -p "$new_folder" "$programs/old"
host_says 9.0 'C:\Program Files\old'
host_says 22.0 'C:\Program Files\Adobe\Common\Plug-ins\7.0\MediaCore\'
host_says 11.0 'C:\Program Files\old\'
before=$(traces)

expect "silent installation" 0 "$(run "$setup" /S)"
expect "the plug-in lies in the newest host's folder" there "$(there "$new_folder/ImporterQuorvane.prm")"
expect "its bytes are the tested ones" same "$(cmp "$new_folder/ImporterQuorvane.prm" "$bin/ImporterQuorvane.prm" && echo same)"
expect "no codec library was installed" "" "$(find "$programs" -iname '*common64*')"
expect "the version under Apps" "$version" "$(app_value DisplayVersion)"
expect "the folder under Apps" 'C:\Program Files\Adobe\Common\Plugins\7.0\MediaCore' "$(app_value PluginFolder)"
expect "importhost prints the version" "importhost $version" "$(wine "$support/importhost.exe" --version 2>/dev/null | tr -d '\r')"
expect "avirepair prints the version" "avirepair $version" "$(wine "$support/avirepair.exe" --version 2>/dev/null | tr -d '\r')"

# --- importing through it

sample=$WINEPREFIX/drive_c/sample.avi
run "$bin/makeavi.exe" --size 64x36 --frames 5 --audio pcm16:2:48000 -o "$sample" >/dev/null
plugin='C:\Program Files\Adobe\Common\Plugins\7.0\MediaCore\ImporterQuorvane.prm'
expect "without the codec library the plug-in cannot be loaded" 3 \
    "$(run "$support/importhost.exe" --plugin "$plugin" info "$sample")"
cp "$bin/quorvane_common64.dll" "$new_folder/"
expect "with it a file is imported" "5 frames" \
    "$(wine "$support/importhost.exe" --plugin "$plugin" info "$sample" 2>/dev/null </dev/null | grep -o '[0-9]* frames,' | head -n 1 | tr -d ,)"

# --- while a host runs

coproc holder { wine "$bin/hold_library.exe" "$plugin" 2>/dev/null; }
read -r said <&"${holder[0]}"
expect "a program holds the plug-in" "held" "${said%$'\r'}"
expect "an upgrade while the host runs" 3 "$(run "$setup" /S)"
expect "a removal while the host runs leaves the plug-in" "there" "$(run "$support/uninstall.exe" /S >/dev/null; sleep 1; there "$new_folder/ImporterQuorvane.prm")"
expect "and its entry under Apps" "$version" "$(app_value DisplayVersion)"
eval "exec ${holder[1]}>&-"
wait "$holder_PID" 2>/dev/null

# --- an upgrade in place, and to another folder

echo "an older version" >"$new_folder/ImporterQuorvane.prm"
expect "an upgrade in place" 0 "$(run "$setup" /S)"
expect "the older plug-in was replaced" same "$(cmp "$new_folder/ImporterQuorvane.prm" "$bin/ImporterQuorvane.prm" && echo same)"
expect "an installation to a chosen folder" 0 "$(run "$setup" /S '/PLUGINS=C:\Program' 'Files\chosen' here)"
expect "the plug-in lies there" there "$(there "$programs/chosen here/ImporterQuorvane.prm")"
expect "and no longer in the old folder, or it would be loaded twice" missing "$(there "$new_folder/ImporterQuorvane.prm")"
expect "the next installation uses the same folder" there \
    "$(run "$setup" /S >/dev/null; there "$programs/chosen here/ImporterQuorvane.prm")"

# --- a file that cannot be written

touch "$programs/no folder"
expect "a folder that cannot be created" 4 "$(run "$setup" /S '/PLUGINS=C:\Program' 'Files\no' folder)"
rm "$programs/no folder"
expect "the earlier installation remains" there "$(there "$programs/chosen here/ImporterQuorvane.prm")"

# --- the log switch, and a complete removal

run regedit /S "$support/log-on.reg" >/dev/null
expect "the log is switched on" 0x1 \
    "$(wine reg query 'HKCU\Software\Quorvane' /v EnableAdobeLog 2>/dev/null | tr -d '\r' | awk '$1 == "EnableAdobeLog" { print $3 }')"
cp "$bin/quorvane_common64.dll" "$programs/chosen here/"
run "$support/importhost.exe" --plugin 'C:\Program Files\chosen here\ImporterQuorvane.prm' info "$sample" >/dev/null
expect "a log was written" 1 "$(ls "$WINEPREFIX"/drive_c/users/*/quorvane/adobe/*.log 2>/dev/null | wc -l)"
run regedit /S "$support/log-off.reg" >/dev/null
expect "the log is switched off" "" "$(wine reg query 'HKCU\Software\Quorvane' /v EnableAdobeLog 2>/dev/null | grep EnableAdobeLog)"
run regedit /S "$support/log-on.reg" >/dev/null
rm "$programs/chosen here/quorvane_common64.dll" "$new_folder/quorvane_common64.dll"
expect "silent removal" 0 "$(uninstall)"
expect "nothing is left" "$before" "$(traces)"

# --- folders that the installer creates

rm -r "$programs/Adobe" "$programs/old"
run reg delete 'HKLM\Software\Adobe' /f >/dev/null
mkdir "$programs/empty before"
touch "$programs/no folder"
before=$(traces)
expect "a first installation to a folder that cannot be created" 4 \
    "$(run "$setup" /S '/PLUGINS=C:\Program' 'Files\no' folder)"
expect "it leaves nothing" "$before" "$(traces)"
expect "an installation without a host" 0 "$(run "$setup" /S)"
expect "the plug-in lies in the usual folder" there \
    "$(there "$programs/Adobe/Common/Plug-ins/7.0/MediaCore/ImporterQuorvane.prm")"
expect "a move to an empty folder" 0 "$(run "$setup" /S '/PLUGINS=C:\Program' 'Files\empty' before)"
expect "all folders created for the previous one are deleted" missing "$(there "$programs/Adobe")"
expect "removal from an existing folder" 0 "$(uninstall)"
expect "only the folder remains" "$before" "$(traces)"
expect "an installation to new folders" 0 "$(run "$setup" /S '/PLUGINS=C:\Program' 'Files\made\for' it)"
expect "an upgrade in them" 0 "$(run "$setup" /S)"
expect "removal from them" 0 "$(uninstall)"
expect "all created folders are deleted" "$before" "$(traces)"

exit $((failures > 0))
