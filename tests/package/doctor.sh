#!/usr/bin/env bash
# doctor.sh BIN VERSION WINEPREFIX: runs importhost doctor in a separate Wine prefix that is prepared for each case:
# hosts in the registry, plug-ins in their folders, the codec library, the log.
set -uo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../artifacts/expect.sh"
bin=$1 version=$2
export WINEPREFIX=$3 WINEARCH=win64 WINEDEBUG=-all,err+virtual WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"

rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
trap 'wineserver -k >/dev/null 2>&1' EXIT
# Wine's services must not keep this test's output open, so they are started here without output.
wine wineboot --init >/dev/null 2>&1 </dev/null

programs="$WINEPREFIX/drive_c/Program Files"
support=$programs/ImporterQuorvane
common="$programs/Adobe/Common/Plugins/7.0/MediaCore"
mkdir -p "$support"
# Outside the build's folder, where the codec library is next to the program.
cp "$bin/importhost.exe" "$support/"

# doctor ARGUMENTS...: sets $page to its output and $code to its exit code. Runs in a folder that holds a codec library,
# which must not count, because a host is not started there.
doctor() {
    page=$(cd "$bin" && timeout 120 wine "$support/importhost.exe" doctor "$@" 2>&1 </dev/null)
    code=$?
    page=${page//$'\r'/}
}
has() { [[ $page == *"$1"* ]] && echo yes || echo "no: $page"; }
fixes() { sed -n '/^To fix$/,$p' <<<"$page" | grep -c '^  [0-9]*\. '; }
reg_add() { wine reg add "$@" /f >/dev/null 2>&1 </dev/null; }
host_says() { reg_add "HKLM\\Software\\Adobe\\Premiere Pro\\$1" /v CommonPluginInstallPath /d "$2"; }
# aged FROM TO: a copy of a plug-in that states version 0.9.0.0.
aged() {
    perl -0777 -pe 's/(\xBD\x04\xEF\xFE.{4}).{8}/$1 . pack("vvvv", 9, 0, 0, 0)/se' "$1" >"$2"
}
# Prints everything that a run must not change.
state() {
    (cd "$WINEPREFIX/drive_c" && find . -type f -path '*uorvane*' -exec sha256sum {} + | sort)
    find "$WINEPREFIX"/drive_c/users -ipath '*quorvane*'
    wine reg query 'HKLM\Software\Adobe' /s 2>/dev/null </dev/null
    wine reg query 'HKCU\Software\Quorvane' /s 2>/dev/null </dev/null
}

# --- no host

doctor
expect "without a host there is something to fix" 1 "$code"
expect "the registry names none" yes "$(has '1. No Premiere Pro is registered on this machine')"
expect "the usual folder is shown" yes \
    "$(has '  usual folder
    C:\Program Files\Adobe\Common\Plug-ins\7.0\MediaCore   (does not exist)')"
expect "and is missing too" 2 "$(fixes)"

# --- hosts, and no plug-in

mkdir -p "$common" "$programs/old"
host_says 9.0 'C:\Program Files\old'
host_says 14.0 'C:\PROGRAM FILES\Adobe\Common\Plugins\7.0\MediaCore'
host_says 22.0 'C:\Program Files\Adobe\Common\Plug-ins\7.0\MediaCore\'
doctor
expect "the newest host comes first, its folder in the spelling that exists" yes \
    "$(has '  Premiere Pro 22.0
    C:\Program Files\Adobe\Common\Plugins\7.0\MediaCore
  Premiere Pro 14.0
    C:\PROGRAM FILES\Adobe\Common\Plugins\7.0\MediaCore
  Premiere Pro 9.0
    C:\Program Files\old
')"
expect "the plug-in is missing" yes "$(has '1. The plug-in is not where Premiere Pro 22.0 looks.')"
expect "that is all" 1 "$(fixes)"

# --- the plug-in without the codec

cp "$bin/ImporterQuorvane.prm" "$common/"
doctor
expect "without the codec there is something to fix" 1 "$code"
expect "hosts that share a folder share its copy" 1 "$(grep -c '^    version ' <<<"$page")"
expect "the plug-in states its version" yes "$(has "    version         $version
    an importer     yes
    can be loaded   no: ")"
expect "the codec library is not found" yes "$(has '1. The codec library quorvane_common64.dll is not found')"
expect "nothing else is wrong" 1 "$(fixes)"

# --- an invalid codec library, and a valid one

system=$WINEPREFIX/drive_c/windows/system32
echo "no library" >"$system/quorvane_common64.dll"
doctor
expect "a codec library that is damaged" yes \
    "$(has "1. The codec library cannot be used: 'C:\\windows\\system32\\quorvane_common64.dll' is damaged")"
cp "$bin/quorvane_common64.dll" "$system/"
before=$(state)
doctor
expect "all well" 0 "$code"
expect "the codec library is Windows' own find" yes \
    "$(has '    can be loaded   yes
    codec library   C:\windows\system32\quorvane_common64.dll')"
expect "nothing to fix" yes "$(has 'Nothing to fix.')"
expect "nothing was written" "$before" "$(state)"

# --- older copies, shortcuts

mkdir -p "$common/sub"
aged "$bin/ImporterQuorvane.prm" "$common/sub/Old Quorvane.prm"
doctor
expect "a second copy is something to fix" 1 "$code"
expect "the newer one is to be kept" yes \
    "$(has '1. Premiere Pro 22.0 finds 2 copies of the plug-in and may load an older one. Keep C:\Program Files\Adobe\Common\Plugins\7.0\MediaCore\ImporterQuorvane.prm, delete C:\Program Files\Adobe\Common\Plugins\7.0\MediaCore\sub\Old Quorvane.prm.')"
mv "$common/sub/Old Quorvane.prm" "$common/ImporterQuorvane.prm"
doctor
expect "an older version alone is to be replaced" yes \
    "$(has "1. The plug-in is of version 0.9.0, older than this program's $version.")"
cp "$bin/ImporterQuorvane.prm" "$common/"
touch "$common/ImporterQuorvane.lnk"
doctor
expect "a shortcut is not followed" yes "$(has '1. A shortcut is not followed by the host: ')"
rm "$common/ImporterQuorvane.lnk"
cp "$bin/quorvane_common64.dll" "$common/Quorvane.prm"
doctor
expect "a library without the mark of an importer" yes "$(has 'its resource IMPT 1000 is missing')"
rm "$common/Quorvane.prm"

# --- the log

reg_add 'HKCU\Software\Quorvane' /v EnableAdobeLog /t REG_DWORD /d 1
profile=$(winepath -u "$(sed -n 's/^    folder  *\(.*\)\\quorvane\\adobe$/\1/p' <<<"$page")" 2>/dev/null)
mkdir -p "$profile/quorvane/adobe"
echo log >"$profile/quorvane/adobe/quorvane_pr_importer_20261120_143048_00.log"
before=$(state)
doctor
expect "a log that is on is no fault" 0 "$code"
expect "the log's switch" yes "$(has '    switch          on')"
expect "its newest file" yes "$(has '    newest file     quorvane_pr_importer_20261120_143048_00.log, 4 bytes')"
expect "no log was written" "$before" "$(state)"
rm -r "$profile/quorvane" && touch "$profile/quorvane"
doctor
expect "a file in the place of the log's folder" yes "$(has '1. No log can be written: ')"

exit $((failures > 0))
