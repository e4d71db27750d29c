; What installer and uninstaller do alike. UN is "" or "un.".

!macro DefineFunctions UN

; Compares the files $R0 and $R1. $R2 is 1 when both exist and hold the same bytes, else 0.
Function ${UN}SameFile
  StrCpy $R2 0
  ClearErrors
  FileOpen $R3 "$R0" r
  ${If} ${Errors}
    Return
  ${EndIf}
  FileOpen $R4 "$R1" r
  ${If} ${Errors}
    FileClose $R3
    Return
  ${EndIf}
  ${Do}
    ClearErrors
    FileReadByte $R3 $R5
    ${If} ${Errors}
      StrCpy $R5 "end"
    ${EndIf}
    ClearErrors
    FileReadByte $R4 $R6
    ${If} ${Errors}
      StrCpy $R6 "end"
    ${EndIf}
    ${If} $R5 != $R6
      ${ExitDo}
    ${EndIf}
    ${If} $R5 == "end"
      StrCpy $R2 1
      ${ExitDo}
    ${EndIf}
  ${Loop}
  FileClose $R3
  FileClose $R4
  ClearErrors
FunctionEnd

; "/AllUsers" of somebody who may not: MultiUser would show a message even when silent. Its own rule is
; used, so that it finds nothing more to say.
Function ${UN}StopWithoutRights
  ${${UN}GetParameters} $R0
!if "${UN}" == ""
  ${StrStr} $R1 $R0 "/AllUsers"
!else
  ${UnStrStr} $R1 $R0 "/AllUsers"
!endif
  UserInfo::GetAccountType
  Pop $R2
  ${If} $R1 != ""
  ${AndIf} $R2 != "Admin"
  ${AndIf} $R2 != "Power"
    MessageBox MB_OK|MB_ICONSTOP "Only an administrator can install or remove Quillon for all users." /SD IDOK
    SetErrorLevel 4
    Quit
  ${EndIf}
FunctionEnd

; A program that runs, a DLL that a host has loaded and a help file that is shown can be neither replaced
; nor removed: stops before anything is changed.
Function ${UN}StopWhenInUse
  !insertmacro StopWhenOneInUse "32\Quillon.dll"
  !insertmacro StopWhenOneInUse "32\Quillon.chm"
  !insertmacro StopWhenOneInUse "64\Quillon.dll"
  !insertmacro StopWhenOneInUse "64\Quillon.chm"
  !insertmacro StopWhenOneInUse "demo\Quillon.dll"
  !insertmacro StopWhenOneInUse "demo\Quillon.chm"
  !insertmacro StopWhenOneInUse "demo\Quorvex.dll"
  !insertmacro StopWhenOneInUse "demo\bench.exe"
FunctionEnd

; Runs the regsvr32 of bitness $R0 with the switches $R1 on the DLL of that bitness, for the machine or
; the user. $R2 is its exit code, -1 when it could not be started. The user's registration is DllInstall.
Function ${UN}Regsvr
  ${If} $MultiUser.InstallMode == "CurrentUser"
    StrCpy $R1 "$R1 /n /i:user"
  ${EndIf}
  ${If} $R0 == "64"
    ${DisableX64FSRedirection}
  ${EndIf}
  StrCpy $R2 -1
  ExecWait '"$SYSDIR\regsvr32.exe" /s $R1 "$INSTDIR\$R0\Quillon.dll"' $R2
  ${EnableX64FSRedirection}
FunctionEnd

!if "${UN}" == ""

Function Register
  StrCpy $R1 ""
  Call Regsvr
  ${If} $R2 <> 0
    MessageBox MB_OK|MB_ICONSTOP "The $R0-bit plug-in could not be registered (code $R2)." /SD IDOK
    SetErrorLevel 2
    Abort
  ${EndIf}
FunctionEnd

!else

Function un.Unregister
  ${If} ${FileExists} "$INSTDIR\$R0\Quillon.dll"
    StrCpy $R1 "/u"
    Call un.Regsvr
  ${EndIf}
FunctionEnd

!endif

!macroend

!macro StopWhenOneInUse FILE
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    ClearErrors
    FileOpen $R3 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONSTOP "Quillon is in use. Close the program that has it open, then try again." /SD IDOK
      SetErrorLevel 3
      Quit
    ${EndIf}
    FileClose $R3
  ${EndIf}
!macroend
