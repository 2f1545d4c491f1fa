; The installer: puts the plug-in into the host's common plug-in folder, and the support files into Windows' program
; folder. Built by Package.cmake, which defines VERSION, STAGE (the folder of the staged files) and OUTPUT.
;
; Silent: setup.exe /S [/PLUGINS="FOLDER"], uninstall.exe /S. Exit codes:
;   0  done                     3  the plug-in is in use: the host or a related program runs
;   1  cancelled by the user    4  the plug-in folder cannot be created
;   2  a file could not be written

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off                 ; the same files produce the same installer
RequestExecutionLevel admin
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WordFunc.nsh

!define NAME "ImporterQuorvane"
!define TITLE "Quorvane importer for Adobe Premiere Pro"
!define PLUGIN "${NAME}.prm"
!define CODEC "quorvane_common64.dll"
!define APPS_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define HOSTS_KEY "Software\Adobe\Premiere Pro"
!define LOG_KEY "Software\Quorvane"
!define SUPPORT "$PROGRAMFILES64\${NAME}"

!define EXIT_IN_USE 3
!define EXIT_NO_FOLDER 4

Name "${TITLE} ${VERSION}"
OutFile "${OUTPUT}"
BrandingText "${NAME} ${VERSION}"
ShowInstDetails show
ShowUninstDetails show

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey FileDescription "Setup of the ${TITLE}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright ""

!define MUI_DIRECTORYPAGE_TEXT_TOP "The plug-in goes into the folder from which Premiere Pro, Media Encoder and \
After Effects load plug-ins. Change it only if you know that yours is another."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Common plug-in folder"
!define MUI_FINISHPAGE_TEXT "Start Premiere Pro and import an AVI file.$\r$\n$\r$\nIf Premiere Pro does not accept it, \
hold Shift while Premiere Pro starts: it then tries all plug-ins again."
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; --- Where the host looks for plug-ins --------------------------------------------------------------------------

; In: $0 a folder. Out: $0 the same, or its other spelling if only that exists, or empty if neither does.
Function ExistingSpelling
    ${If} ${FileExists} "$0\*.*"
        Return
    ${EndIf}
    ${If} $0 == ""
        Return
    ${EndIf}
    ${WordReplace} "$0" "\Plug-ins\" "\Plugins\" "+" $1
    ${If} $1 == $0
        ${WordReplace} "$0" "\Plugins\" "\Plug-ins\" "+" $1
    ${EndIf}
    ${If} ${FileExists} "$1\*.*"
        StrCpy $0 $1
    ${Else}
        StrCpy $0 ""
    ${EndIf}
FunctionEnd

; Out: $0 the folder of the newest host whose folder exists; empty if there is none.
Function FolderOfNewestHost
    Push $R0    ; number of the subkey
    Push $R1    ; its name, which is the host's version
    Push $R2    ; the newest version so far
    Push $R3    ; its folder
    StrCpy $R0 0
    StrCpy $R2 ""
    StrCpy $R3 ""
    ${Do}
        EnumRegKey $R1 HKLM "${HOSTS_KEY}" $R0
        ${If} $R1 == ""
            ${Break}
        ${EndIf}
        IntOp $R0 $R0 + 1
        ReadRegStr $0 HKLM "${HOSTS_KEY}\$R1" "CommonPluginInstallPath"
        ${If} $0 == ""
            ${Continue}
        ${EndIf}
        ${GetParent} "$0\x" $0      ; without a backslash at its end
        Call ExistingSpelling
        ${VersionCompare} "$R1" "$R2" $1
        ${If} $0 != ""
        ${AndIf} $1 != 2
            StrCpy $R2 $R1
            StrCpy $R3 $0
        ${EndIf}
    ${Loop}
    StrCpy $0 $R3
    Pop $R3
    Pop $R2
    Pop $R1
    Pop $R0
FunctionEnd

; Out: $0 the folder of a host that registers none.
Function UsualFolder
    StrCpy $0 "$PROGRAMFILES64\Adobe\Common\Plug-ins\7.0\MediaCore"
    Call ExistingSpelling
    ${If} $0 == ""
        StrCpy $0 "$PROGRAMFILES64\Adobe\Common\Plug-ins\7.0\MediaCore"
    ${EndIf}
FunctionEnd

; The folder from the command line, else an earlier installation's, else the newest host's. (The usual /D= is ignored
; silently if its folder cannot be created.)
Function .onInit
    SetRegView 64
    SetShellVarContext all
    ${GetParameters} $0
    ${GetOptions} $0 "/PLUGINS=" $INSTDIR
    ${If} $INSTDIR != ""
        Return
    ${EndIf}
    ReadRegStr $0 HKLM "${APPS_KEY}" "PluginFolder"
    Call ExistingSpelling
    ${If} $0 == ""
        Call FolderOfNewestHost
    ${EndIf}
    ${If} $0 == ""
        Call UsualFolder
    ${EndIf}
    StrCpy $INSTDIR $0
FunctionEnd

; --- Questions before anything is changed -----------------------------------------------------------------------

; A loaded plug-in cannot be opened for writing. Ends the program if it stays in use; $0 is its path.
!macro EXPECT_FREE UN
Function ${UN}ExpectFree
    ${DoWhile} ${FileExists} "$0"
        ClearErrors
        FileOpen $1 "$0" a
        ${IfNot} ${Errors}
            FileClose $1
            ${Break}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "The plug-in is in use or protected:$\r$\n$0$\r$\n$\r$\n\
Close Premiere Pro, Media Encoder and After Effects, then try again." /SD IDCANCEL IDRETRY retry
        DetailPrint "The plug-in is in use: $0"
        SetErrorLevel ${EXIT_IN_USE}
        Quit
        retry:
    ${Loop}
FunctionEnd
!macroend
!insertmacro EXPECT_FREE ""
!insertmacro EXPECT_FREE "un."

; The plug-in cannot be loaded without the codec library, which comes with the codec, not with this installer.
Function LookForCodec
    SearchPath $0 "${CODEC}"
    ${If} $0 == ""
    ${AndIf} ${FileExists} "$INSTDIR\${CODEC}"
        StrCpy $0 "$INSTDIR\${CODEC}"
    ${EndIf}
    ${If} $0 == ""
        DetailPrint "${CODEC} was not found."
        MessageBox MB_OK|MB_ICONINFORMATION "${CODEC} was not found.$\r$\n$\r$\nIt comes with the Quorvane codec. \
Premiere Pro cannot load the importer without it: install the Quorvane codec, then start Premiere Pro." /SD IDOK
    ${Else}
        DetailPrint "Codec library: $0"
    ${EndIf}
FunctionEnd

; --- Folders that the installation creates ----------------------------------------------------------------------

; Out: $3 the topmost folder on the path to the plug-in folder that does not exist yet; empty if all exist.
Function UppermostToMake
    StrCpy $3 ""
    StrCpy $0 "$INSTDIR"
    ${DoUntil} $0 == ""
        ${If} ${FileExists} "$0\*.*"
            ${Break}
        ${EndIf}
        StrCpy $3 "$0"
        ${GetParent} "$0" $0
    ${Loop}
FunctionEnd

; Removes the folders that an installation created on the path to $2, its plug-in folder, if they are empty now.
!macro REMOVE_MADE_FOLDERS UN
Function ${UN}RemoveMadeFolders
    ReadRegStr $1 HKLM "${APPS_KEY}" "MadeFolder"
    StrCpy $0 "$2"
    ${If} $1 != ""
        ${DoUntil} $0 == ""
            RMDir "$0"
            ${If} $0 == $1
                ${Break}
            ${EndIf}
            ${GetParent} "$0" $0
        ${Loop}
    ${EndIf}
    DeleteRegValue HKLM "${APPS_KEY}" "MadeFolder"
FunctionEnd
!macroend
!insertmacro REMOVE_MADE_FOLDERS ""
!insertmacro REMOVE_MADE_FOLDERS "un."

; --- Installation -----------------------------------------------------------------------------------------------

; $2: the earlier version's folder if it is a different one, where it would be loaded in addition; otherwise empty.
Function ExpectEarlierFree
    ReadRegStr $2 HKLM "${APPS_KEY}" "PluginFolder"
    ${If} $2 == $INSTDIR
        StrCpy $2 ""
    ${EndIf}
    ${If} $2 != ""
        StrCpy $0 "$2\${PLUGIN}"
        Call ExpectFree
    ${EndIf}
FunctionEnd

Section "Install"
    StrCpy $0 "$INSTDIR\${PLUGIN}"
    Call ExpectFree
    Call ExpectEarlierFree
    Call LookForCodec

    Call UppermostToMake
    ClearErrors
    CreateDirectory "$INSTDIR"
    ${If} ${Errors}
        DetailPrint "The folder cannot be created: $INSTDIR"
        MessageBox MB_OK|MB_ICONSTOP "The folder cannot be created:$\r$\n$INSTDIR" /SD IDOK
        SetErrorLevel ${EXIT_NO_FOLDER}
        Quit
    ${EndIf}
    SetOutPath "$INSTDIR"
    File "${STAGE}\${PLUGIN}"
    ${If} $2 != ""                  ; not before the new one is there
        Delete "$2\${PLUGIN}"
        Call RemoveMadeFolders
    ${EndIf}
    ${If} $3 != ""
        WriteRegStr HKLM "${APPS_KEY}" "MadeFolder" "$3"
    ${EndIf}

    SetOutPath "${SUPPORT}"
    File "${STAGE}\importhost.exe"
    File "${STAGE}\avirepair.exe"
    File "${STAGE}\README.txt"
    File "${STAGE}\third-party-licenses.txt"
    File "${STAGE}\log-on.reg"
    File "${STAGE}\log-off.reg"
    WriteUninstaller "${SUPPORT}\uninstall.exe"

    WriteRegStr HKLM "${APPS_KEY}" "DisplayName" "${TITLE}"
    WriteRegStr HKLM "${APPS_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${APPS_KEY}" "Publisher" "${NAME}"
    WriteRegStr HKLM "${APPS_KEY}" "InstallLocation" "${SUPPORT}"
    WriteRegStr HKLM "${APPS_KEY}" "PluginFolder" "$INSTDIR"
    WriteRegStr HKLM "${APPS_KEY}" "UninstallString" '"${SUPPORT}\uninstall.exe"'
    WriteRegStr HKLM "${APPS_KEY}" "QuietUninstallString" '"${SUPPORT}\uninstall.exe" /S'
    WriteRegDWORD HKLM "${APPS_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${APPS_KEY}" "NoRepair" 1
    SectionGetSize 0 $0
    WriteRegDWORD HKLM "${APPS_KEY}" "EstimatedSize" $0
SectionEnd

; --- Removal ----------------------------------------------------------------------------------------------------

Function un.onInit
    SetRegView 64
    SetShellVarContext all
FunctionEnd

; The switch and the logs of this user are removed; other users of the machine keep theirs.
Function un.RemoveLogs
    DeleteRegValue HKCU "${LOG_KEY}" "EnableAdobeLog"
    DeleteRegKey /ifempty HKCU "${LOG_KEY}"
    Delete "$PROFILE\quorvane\adobe\quorvane_pr_importer_*.log"
    RMDir "$PROFILE\quorvane\adobe"
    RMDir "$PROFILE\quorvane"
FunctionEnd

Section "Uninstall"
    ReadRegStr $2 HKLM "${APPS_KEY}" "PluginFolder"
    ${If} $2 != ""
        StrCpy $0 "$2\${PLUGIN}"
        Call un.ExpectFree
        Delete "$2\${PLUGIN}"
        Call un.RemoveMadeFolders
    ${EndIf}
    Call un.RemoveLogs
    DeleteRegKey HKLM "${APPS_KEY}"
    Delete "${SUPPORT}\importhost.exe"
    Delete "${SUPPORT}\avirepair.exe"
    Delete "${SUPPORT}\README.txt"
    Delete "${SUPPORT}\third-party-licenses.txt"
    Delete "${SUPPORT}\log-on.reg"
    Delete "${SUPPORT}\log-off.reg"
    Delete "${SUPPORT}\uninstall.exe"
    RMDir "${SUPPORT}"              ; last: its end is the end of the removal for those who wait for it
SectionEnd
