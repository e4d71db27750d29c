; The installer: both bitnesses of the plug-in, its examples and help, and the demo.
;
;   setup.exe [/AllUsers | /CurrentUser] [/S] [/D=FOLDER]
;   uninstall.exe [/AllUsers | /CurrentUser] [/S] [_?=FOLDER]
;
; Exit codes beside those of every NSIS installer: 2 a DLL could not be registered, 3 a file is in use,
; 4 /AllUsers without an administrator's rights.
; scripts/package.sh compiles it; VERSION, STAGE (what is to be installed) and OUTPUT come from there. With
; QUICK it is packed less well in a tenth of the time.

Unicode true
!ifdef QUICK
SetCompressor zlib
!else
SetCompressor /SOLID lzma
!endif
ManifestDPIAware true

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon"
!define MULTIUSER_MUI
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "Quillon"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include x64.nsh
!include "${STAGE}/files.nsh"

Name "Quillon ${VERSION}"
OutFile "${OUTPUT}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Quillon"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Quillon, device plug-in for Nimbra room units"
VIAddVersionKey LegalCopyright "MIT licence"

!define MUI_ICON "${SOURCE}/res/generated/Vantor.ico"
!define MUI_UNICON "${SOURCE}/res/generated/Vantor.ico"
!define MUI_COMPONENTSPAGE_NODESC
!define MULTIUSER_PAGE_CUSTOMFUNCTION_LEAVE TakeGivenFolder
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; The folder of /D; empty without it.
Var GivenFolder

!include "functions.nsh"
!insertmacro DefineFunctions ""
!insertmacro DefineFunctions "un."

; An example stands twice: as delivered in "examples", always replaced, and beside the DLL for the
; operator, replaced as long as it equals the one delivered before.
!macro InstallExample FOLDER SUBFOLDER FILE
  StrCpy $R0 "$INSTDIR\${FOLDER}\${SUBFOLDER}${FILE}"
  StrCpy $R1 "$INSTDIR\${FOLDER}\examples\${SUBFOLDER}${FILE}"
  Call SameFile
  ${IfNot} ${FileExists} "$R0"
  ${OrIf} $R2 = 1
    SetOutPath "$INSTDIR\${FOLDER}\${SUBFOLDER}"
    File "${STAGE}/examples/${SUBFOLDER}${FILE}"
  ${EndIf}
  SetOutPath "$INSTDIR\${FOLDER}\examples\${SUBFOLDER}"
  File "${STAGE}/examples/${SUBFOLDER}${FILE}"
!macroend

!macro RemoveExample FOLDER SUBFOLDER FILE
  StrCpy $R0 "$INSTDIR\${FOLDER}\${SUBFOLDER}${FILE}"
  StrCpy $R1 "$INSTDIR\${FOLDER}\examples\${SUBFOLDER}${FILE}"
  Call un.SameFile
  ${If} $R2 = 1
    Delete "$R0"
  ${EndIf}
!macroend

!macro RemoveDelivered FOLDER SUBFOLDER FILE
  Delete "$INSTDIR\${FOLDER}\examples\${SUBFOLDER}${FILE}"
!macroend

!macro InstallPlugIn FOLDER FROM
  SetOutPath "$INSTDIR\${FOLDER}"
  File "${STAGE}/${FROM}/Quillon.dll"
  File "${STAGE}/${FROM}/Quillon.PlugIn.manifest"
!ifdef HAVE_HELP
  File "${STAGE}/Quillon.chm"
!endif
  !insertmacro EachExample InstallExample "${FOLDER}"
!macroend

; The help of the plug-in that was installed last.
!macro StartMenuHelp FOLDER
!ifdef HAVE_HELP
  SetOutPath "$INSTDIR\${FOLDER}"
  CreateDirectory "$SMPROGRAMS\Quillon"
  CreateShortCut "$SMPROGRAMS\Quillon\Quillon help.lnk" "$INSTDIR\${FOLDER}\Quillon.chm"
!endif
!macroend

; What the operator keeps, edited or made, also keeps the folder.
!macro RemovePlugIn FOLDER
  !insertmacro EachExample RemoveExample "${FOLDER}"
  !insertmacro EachExample RemoveDelivered "${FOLDER}"
  !insertmacro EachExampleFolder "${FOLDER}\examples"
  RMDir "$INSTDIR\${FOLDER}\examples"
  Delete "$INSTDIR\${FOLDER}\Quillon.dll"
  Delete "$INSTDIR\${FOLDER}\Quillon.PlugIn.manifest"
  Delete "$INSTDIR\${FOLDER}\Quillon.chm"
  Delete "$INSTDIR\${FOLDER}\temp.cps"
  !insertmacro EachExampleFolder "${FOLDER}"
  RMDir "$INSTDIR\${FOLDER}"
!macroend

Section "-Common"
  Call StopWhenInUse
  SetOutPath "$INSTDIR"
  File "/oname=LICENSE.txt" "${SOURCE}/LICENSE"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Quillon"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" \
    '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" \
    '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Plug-in for 32-bit hosts"
  !insertmacro InstallPlugIn "32" "32"
  !insertmacro StartMenuHelp "32"
  StrCpy $R0 "32"
  Call Register
SectionEnd

Section "Plug-in for 64-bit hosts" PlugIn64
  !insertmacro InstallPlugIn "64" "64"
  !insertmacro StartMenuHelp "64"
  StrCpy $R0 "64"
  Call Register
SectionEnd

Section "Demo with simulated rooms"
  !insertmacro InstallPlugIn "demo" "32"
  SetOutPath "$INSTDIR\demo"
  File /r "${STAGE}/demo/*"
  SetOutPath "$INSTDIR\demo"
  CreateDirectory "$SMPROGRAMS\Quillon"
  CreateShortCut "$SMPROGRAMS\Quillon\Quillon demo.lnk" "$INSTDIR\demo\bench.exe" \
    "--manifest demo.manifest"
SectionEnd

Section "Uninstall"
  Call un.StopWhenInUse
  StrCpy $R0 "32"
  Call un.Unregister
  StrCpy $R0 "64"
  Call un.Unregister
  Delete "$SMPROGRAMS\Quillon\Quillon demo.lnk"
  Delete "$SMPROGRAMS\Quillon\Quillon help.lnk"
  RMDir "$SMPROGRAMS\Quillon"
  !insertmacro EachDemoFile
  !insertmacro RemovePlugIn "32"
  !insertmacro RemovePlugIn "64"
  !insertmacro RemovePlugIn "demo"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd

; MultiUser chooses the folder by scope and by what was installed before, here and after its page; /D goes
; before both.
Function .onInit
  StrCpy $GivenFolder $INSTDIR
  Call StopWithoutRights
  !insertmacro MULTIUSER_INIT
  Call TakeGivenFolder
  ${IfNot} ${RunningX64}
    SectionSetFlags ${PlugIn64} ${SF_RO}
  ${EndIf}
FunctionEnd

Function TakeGivenFolder
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${EndIf}
FunctionEnd

Function un.onInit
  StrCpy $R9 $INSTDIR
  Call un.StopWithoutRights
  !insertmacro MULTIUSER_UNINIT
  StrCpy $INSTDIR $R9
FunctionEnd
