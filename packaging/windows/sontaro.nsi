; The installer for Windows, for one user and without an administrator's rights.
; makensis -DVERSION=... -DSTAGE=folder -DICON=file -DSIDE=file -DOUTPUT=file
Target amd64-unicode
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Sontaro"
!define PUBLISHER "the Sontaro developers"

Name "Sontaro"
BrandingText "Sontaro ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Sontaro"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" InstallLocation
RequestExecutionLevel user
ManifestDPIAware true
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\sontaro.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE SimpChinese

LangString Running ${LANG_ENGLISH} "is running. Close it and try again."
LangString Running ${LANG_SIMPCHINESE} "正在运行。请先关闭它，然后重试。"
LangString EarlierStays ${LANG_ENGLISH} "The earlier installation cannot be removed:"
LangString EarlierStays ${LANG_SIMPCHINESE} "无法删除先前的安装："
LangString Purpose ${LANG_ENGLISH} "Find, configure and remote-control networked video players"
LangString Purpose ${LANG_SIMPCHINESE} "查找、配置和遥控网络视频播放器"

VIProductVersion "${VERSION}.0"
!macro VersionTexts language publisher description
    VIAddVersionKey /LANG=${language} ProductName "Sontaro"
    VIAddVersionKey /LANG=${language} ProductVersion "${VERSION}"
    VIAddVersionKey /LANG=${language} FileVersion "${VERSION}"
    VIAddVersionKey /LANG=${language} CompanyName "${publisher}"
    VIAddVersionKey /LANG=${language} FileDescription "${description}"
    VIAddVersionKey /LANG=${language} LegalCopyright "© 2026 ${publisher}"
!macroend
!insertmacro VersionTexts ${LANG_ENGLISH} "${PUBLISHER}" "Installs Sontaro"
!insertmacro VersionTexts ${LANG_SIMPCHINESE} "Sontaro 开发者" "Sontaro 安装程序"

; The system lets nobody write to a program that runs. Its mutex is no help: that is named after a
; title, which the customer and the version decide.
!macro RequireStopped program
    ${If} ${FileExists} "$INSTDIR\${program}"
        ${Do}
            ClearErrors
            FileOpen $0 "$INSTDIR\${program}" a
            ${IfNot} ${Errors}
                FileClose $0
                ${ExitDo}
            ${EndIf}
            ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${program} $(Running)" /SD IDCANCEL IDCANCEL`
                Abort "${program} $(Running)"
            ${EndIf}
        ${Loop}
    ${EndIf}
!macroend

; Where it was installed before, if that was in another folder.
Function RemoveEarlier
    ReadRegStr $1 HKCU "${UNINSTALL_KEY}" InstallLocation
    ${If} $1 == ""
    ${OrIf} $1 == $INSTDIR
    ${OrIfNot} ${FileExists} "$1\uninstall.exe"
        Return
    ${EndIf}
    ExecWait '"$1\uninstall.exe" /S _?=$1' $2
    ${If} $2 <> 0
        MessageBox MB_OK|MB_ICONEXCLAMATION "$(EarlierStays) $1" /SD IDOK
        Abort "$(EarlierStays) $1"
    ${EndIf}
    Delete "$1\uninstall.exe"
    RMDir "$1"
FunctionEnd

Section
    !insertmacro RequireStopped sontaro.exe
    !insertmacro RequireStopped sontaro-cli.exe
    !insertmacro RequireStopped sontaro-player.exe
    Call RemoveEarlier
    SetOutPath $INSTDIR
    File /r "${STAGE}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Sontaro.lnk" "$INSTDIR\sontaro.exe" "" "" "" "" "" "$(Purpose)"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName "Sontaro"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\sontaro.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

; What the customer made stays: Templates beside the program, and the settings in the user's profile.
Section un.
    !insertmacro RequireStopped sontaro.exe
    !insertmacro RequireStopped sontaro-cli.exe
    !insertmacro RequireStopped sontaro-player.exe
    Delete "$INSTDIR\sontaro.exe"
    Delete "$INSTDIR\sontaro-cli.exe"
    Delete "$INSTDIR\sontaro-player.exe"
    Delete "$INSTDIR\README.txt"
    RMDir /r "$INSTDIR\licences"
    Delete "$INSTDIR\ControlProtocol.Json"
    Delete "$INSTDIR\Demo\ControlProtocol.Json"
    RMDir /r "$INSTDIR\Temp"
    Delete "$INSTDIR\Videos\VideoTypeProtocol.Json"
    RMDir "$INSTDIR\Videos"
    RMDir /r "$INSTDIR\Demo\Temp"
    RMDir /r "$INSTDIR\Demo\earlier"
    RMDir /r "$INSTDIR\Demo\Uploads"
    Delete "$INSTDIR\Demo\Videos\VideoTypeProtocol.Json"
    RMDir "$INSTDIR\Demo\Videos"
    RMDir "$INSTDIR\Demo"
    Delete "$SMPROGRAMS\Sontaro.lnk"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
SectionEnd
