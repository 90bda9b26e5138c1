; The Zelkova2 installer: per user, without administrator rights, into the user's own programs
; folder; a 64-bit installer for the 64-bit programs. makensis gets ZK_VERSION, ZK_PROGRAMS (the
; folder of the built programs), ZK_DOCS (README.txt and LICENSE.txt), ZK_ICON and ZK_OUT (the
; installer to write).
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma

!include "MUI2.nsh"
!include "LogicLib.nsh"
!include "FileFunc.nsh"

Name "Zelkova2"
OutFile "${ZK_OUT}"
InstallDir "$LOCALAPPDATA\Programs\Zelkova2"
InstallDirRegKey HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelkova2" "InstallLocation"
VIProductVersion "${ZK_VERSION}.0"
VIAddVersionKey "ProductName" "Zelkova2"
VIAddVersionKey "FileDescription" "Zelkova2 setup"
VIAddVersionKey "FileVersion" "${ZK_VERSION}"
VIAddVersionKey "ProductVersion" "${ZK_VERSION}"
VIAddVersionKey "LegalCopyright" "The Zelkova2 developers"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelkova2"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define MUI_ICON "${ZK_ICON}"
!define MUI_UNICON "${ZK_ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\StartZelkova2.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start Zelkova2 now"
!define MUI_COMPONENTSPAGE_NODESC

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${ZK_DOCS}\LICENSE.txt"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running Zelkova2 ends first, with desktop 1 shown: the user is not left on a desktop that
; cannot be left. The windows still on desktops 2 to 4 stay out of reach until Zelkova2 runs
; again; the control tool names them, and the user is told.
!macro ShutDownZelkova un
Function ${un}ShutDownZelkova
  ${If} ${FileExists} "$INSTDIR\zelkovactl.exe"
    nsExec::Exec '"$INSTDIR\zelkovactl.exe" switch 1'
    Pop $0
    nsExec::ExecToStack '"$INSTDIR\zelkovactl.exe" shutdown'
    Pop $0
    Pop $1
    ${If} $1 != ""
      MessageBox MB_OK|MB_ICONINFORMATION "$1" /SD IDOK
    ${EndIf}
  ${EndIf}
FunctionEnd
!macroend
!insertmacro ShutDownZelkova ""
!insertmacro ShutDownZelkova "un."

Section "Zelkova2" SecProgram
  SectionIn RO
  SetShellVarContext current
  Call ShutDownZelkova
  SetOutPath "$INSTDIR"
  File "${ZK_PROGRAMS}\Zelkova2.exe"
  File "${ZK_PROGRAMS}\Zelkova2Core.dll"
  File "${ZK_PROGRAMS}\DeskPilot.exe"
  File "${ZK_PROGRAMS}\DeskHerald.exe"
  File "${ZK_PROGRAMS}\ZelkovaError.exe"
  File "${ZK_PROGRAMS}\ZelkovaSettings.exe"
  File "${ZK_PROGRAMS}\zelkovactl.exe"
  File "${ZK_PROGRAMS}\StartZelkova2.exe"
  File "${ZK_DOCS}\README.txt"
  File "${ZK_DOCS}\LICENSE.txt"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Zelkova2"
  CreateShortcut "$SMPROGRAMS\Zelkova2\Zelkova2.lnk" "$INSTDIR\StartZelkova2.exe"
  CreateShortcut "$SMPROGRAMS\Zelkova2\Zelkova2 settings.lnk" "$INSTDIR\ZelkovaSettings.exe"
  CreateShortcut "$SMPROGRAMS\Zelkova2\Uninstall Zelkova2.lnk" "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Zelkova2"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${ZK_VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Zelkova2 developers"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Zelkova2.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Most laptops have no numeric keypad, which the default hotkeys use: the control tool stores the
; number row's hotkeys (all twelve values), as the settings window's button does.
Section /o "Hotkeys without a keypad (Ctrl+Alt+1 to 4)" SecLaptop
  nsExec::Exec '"$INSTDIR\zelkovactl.exe" hotkey preset laptop'
  Pop $0
SectionEnd

; The log-on entry shows desktop 1 before it starts Zelkova2.
Section "Start Zelkova2 when I log on" SecAutostart
  WriteRegStr HKCU "${RUN_KEY}" "Zelkova2" '"$INSTDIR\ZelkovaSettings.exe" --start'
SectionEnd

; The log-on entry and the Start menu go before the programs they name, and the folder last: an
; uninstall cut short never leaves an entry that starts a missing program, and a folder that is
; gone means the uninstall has finished.
Section "un.Zelkova2" UnSecProgram
  SectionIn RO
  SetShellVarContext current
  Call un.ShutDownZelkova
  DeleteRegValue HKCU "${RUN_KEY}" "Zelkova2"
  Delete "$SMPROGRAMS\Zelkova2\Zelkova2.lnk"
  Delete "$SMPROGRAMS\Zelkova2\Zelkova2 settings.lnk"
  Delete "$SMPROGRAMS\Zelkova2\Uninstall Zelkova2.lnk"
  RMDir "$SMPROGRAMS\Zelkova2"
  Delete "$INSTDIR\Zelkova2.exe"
  Delete "$INSTDIR\Zelkova2Core.dll"
  Delete "$INSTDIR\DeskPilot.exe"
  Delete "$INSTDIR\DeskHerald.exe"
  Delete "$INSTDIR\ZelkovaError.exe"
  Delete "$INSTDIR\ZelkovaSettings.exe"
  Delete "$INSTDIR\zelkovactl.exe"
  Delete "$INSTDIR\StartZelkova2.exe"
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\Uninstall.exe"
SectionEnd

; The hotkeys, names and start-up programs stay, for a later install, unless the user asks.
; Silently: Uninstall.exe /S /REMOVESETTINGS
Section /o "un.Remove my settings" UnSecSettings
  DeleteRegKey HKCU "Software\Zelkova"
SectionEnd

Section "-un.Folder"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  RMDir "$INSTDIR"
SectionEnd

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/REMOVESETTINGS" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${UnSecSettings} ${SF_SELECTED}
  ${EndIf}
FunctionEnd
