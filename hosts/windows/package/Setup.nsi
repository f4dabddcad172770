; hosts/windows/package/Setup.nsi: installs, upgrades and removes the year planner, for one user or
; for everybody, for programs of both word sizes.
;   Setup.exe [/S] [/AllUsers] [/D=FOLDER]
; Exit codes: 0 done, 1 cancelled, 2 failed, 3 a program uses the planner, 4 an administrator is
; needed. But for 0 everything is as it was.
; package.sh defines: VERSION, STAGE (the folder that is packed), LIST (its files, one a line),
; HOLDERS64 and, unless the 32-bit part is left out, HOLDERS32 (SetupHelper.exe), OUT, STUB (x86-unicode or amd64-unicode), PUBLISHER,
; ICON, and SIGN where the uninstaller is to be signed.
Target ${STUB}
Unicode true
!include LogicLib.nsh
!include FileFunc.nsh
!include MUI2.nsh
!include nsDialogs.nsh
!include TextFunc.nsh
!include x64.nsh

!define PRODUCT "OutlookVelkor"
!define TITLE "OutlookVelkor year planner"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define ENTRY "${UNINSTALL}\${PRODUCT}"
!define FAILED 2
!define IN_USE 3
!define NEEDS_ADMINISTRATOR 4

Name "${TITLE}"
BrandingText "${PRODUCT} ${VERSION}"
OutFile "${OUT}"
SetCompressor /SOLID lzma
SetCompressorDictSize 32
; Rights are asked for only where everybody is to have it.
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS all
SetDateSave on
XPStyle on
ShowInstDetails nevershow
AutoCloseWindow true
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" ""
VIAddVersionKey "FileDescription" "Setup of the year planner"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "${COPYRIGHT}. MIT licence"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "ProductVersion" "${VERSION}"
!ifdef SIGN
  !uninstfinalize '${SIGN} "%1"' = 0
!endif

Var AllUsers
; Which programs this Windows runs; both on most.
Var Has64
Var Has32
; What went wrong, empty while nothing did.
Var Failure
; The outermost folder that the installation makes, empty when all were there.
Var FirstFolder
Var OnlyMe
Var Everybody
Var StartForm
Var ShowStartPage

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
Page custom ShowUsersPage LeaveUsersPage
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipWhereInstalled
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
Page custom ShowLastPage LeaveLastPage
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro Shared un

; Says the text on the stack: in a message, or, when silent, where output goes.
Function ${un}Tell
  Exch $0
  Push $1
  ${If} ${Silent}
    System::Call 'kernel32::GetStdHandle(i -11) p.r1'
    ${If} $1 P<= 0
      System::Call 'kernel32::AttachConsole(i -1)'
      System::Call 'kernel32::GetStdHandle(i -11) p.r1'
    ${EndIf}
    ${If} $1 P> 0
      FileWrite $1 "$0$\r$\n"
    ${EndIf}
  ${Else}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$0"
  ${EndIf}
  Pop $1
  Pop $0
FunctionEnd

; Chooses the part of the registry and the folders of the start menu.
Function ${un}UseContext
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ${If} $AllUsers == 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

Function ${un}FindWordSizes
  StrCpy $Has64 0
  StrCpy $Has32 1
  ; Its processor's own programs alone: another one would have to emulate them within regsvr32.
  ${If} ${IsNativeAMD64}
    StrCpy $Has64 1
    ; A server can be without the part that runs 32-bit programs.
    ${IfNot} ${FileExists} "$WINDIR\SysWOW64\regsvr32.exe"
      StrCpy $Has32 0
    ${EndIf}
  ${EndIf}
  !ifndef HOLDERS32
    StrCpy $Has32 0
  !endif
FunctionEnd

; Runs the command on the stack; what fails is noted, the first failure stays.
Function ${un}Run
  Exch $0
  Push $1
  ClearErrors
  ExecWait '$0' $1
  ${If} ${Errors}
    StrCpy $1 "cannot be started"
  ${EndIf}
  ${If} $1 != 0
  ${AndIf} $Failure == ""
    StrCpy $Failure "$0: $1"
  ${EndIf}
  ClearErrors
  Pop $1
  Pop $0
FunctionEnd

!macroend
!macro Run un command
  Push '${command}'
  Call ${un}Run
!macroend

!insertmacro Shared ""
!insertmacro Shared "un."

; Registers or unregisters what lies in the folder of one word size.
!macro ForWordSize un size regsvr32 libraryOptions programOption
  ${If} ${FileExists} "$INSTDIR\${size}-bit\OutlookVelkor.ocx"
    !insertmacro Run "${un}" '"${regsvr32}" /s ${libraryOptions} "$INSTDIR\${size}-bit\OutlookVelkor.ocx"'
    !insertmacro Run "${un}" '"$INSTDIR\${size}-bit\vkrRefresh.exe" ${programOption}'
  ${EndIf}
!macroend
!macro ForBothSizes un libraryOptions programOption
  ; The system shows its programs of 32 bits to this one in the place of those of 64 and has
  ; another name for these.
  !if ${NSIS_PTR_SIZE} == 4
    !insertmacro ForWordSize "${un}" 64 "$WINDIR\Sysnative\regsvr32.exe" "${libraryOptions}" "${programOption}"
    !insertmacro ForWordSize "${un}" 32 "$SYSDIR\regsvr32.exe" "${libraryOptions}" "${programOption}"
  !else
    !insertmacro ForWordSize "${un}" 64 "$SYSDIR\regsvr32.exe" "${libraryOptions}" "${programOption}"
    !insertmacro ForWordSize "${un}" 32 "$WINDIR\SysWOW64\regsvr32.exe" "${libraryOptions}" "${programOption}"
  !endif
!macroend

!macro SharedWork un

Function ${un}Unregister
  ${If} $AllUsers == 1
    !insertmacro ForBothSizes "${un}" "/u" "/UnregServer"
  ${Else}
    !insertmacro ForBothSizes "${un}" "/u /n /i:user" "/UnregServerPerUser"
  ${EndIf}
FunctionEnd

; Goes on only when no program uses what is installed.
Function ${un}WaitUntilFree
  Push $0
  Push $1
  InitPluginsDir
  ${If} $Has64 == 1
    File "/oname=$PLUGINSDIR\SetupHelper.exe" "${HOLDERS64}"
  ${EndIf}
  !ifdef HOLDERS32
    ${If} $Has64 == 0
      File "/oname=$PLUGINSDIR\SetupHelper.exe" "${HOLDERS32}"
    ${EndIf}
  !endif
  ${Do}
    nsExec::ExecToStack '"$PLUGINSDIR\SetupHelper.exe" /Holders "$INSTDIR\64-bit\OutlookVelkor.ocx" "$INSTDIR\64-bit\vkrRefresh.exe" "$INSTDIR\64-bit\TryOutForm.exe" "$INSTDIR\32-bit\OutlookVelkor.ocx" "$INSTDIR\32-bit\vkrRefresh.exe" "$INSTDIR\32-bit\TryOutForm.exe"'
    Pop $0
    Pop $1
    ${If} $0 == 0
      ${ExitDo}
    ${ElseIf} $0 != 1
      StrCpy $1 "Whether a program uses the year planner cannot be found out ($0 $1)."
    ${ElseIf} $1 == ""
      StrCpy $1 "A program uses the year planner. Close the programs that show it and try again. Nothing was changed."
    ${Else}
      StrCpy $1 "These programs use the year planner:$\r$\n$1Close them and try again. Nothing was changed."
    ${EndIf}
    SetErrorLevel ${IN_USE}
    ${If} ${Silent}
      Push $1
      Call ${un}Tell
    ${ElseIf} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$1" IDRETRY`
      ${Continue}
    ${EndIf}
    !if "${un}" != ""
      ${If} $EXEDIR != $INSTDIR
        Call un.RemoveItself
      ${EndIf}
    !endif
    Quit
  ${Loop}
  SetErrorLevel 0
  Pop $1
  Pop $0
FunctionEnd

; Removes the folders of the files that the list $R0 names below $R1, where they are empty.
Function ${un}RemoveEmptyFolders
  ClearErrors
  FileOpen $R3 $R0 r
  ${Do}
    FileRead $R3 $R4
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    ${TrimNewLines} $R4 $R4
    ${GetParent} "$R1\$R4" $R5
    ${If} $R5 != $R1
      RMDir $R5
    ${EndIf}
    ClearErrors
  ${Loop}
  FileClose $R3
  ClearErrors
FunctionEnd

; Removes the folders that were made for the installation, where they are empty.
Function ${un}RemoveMadeFolders
  Push $0
  ; No program may work in what is removed.
  SetOutPath $TEMP
  StrCpy $0 $INSTDIR
  ${DoWhile} $FirstFolder != ""
    RMDir $0
    ${If} $0 == $FirstFolder
      ${ExitDo}
    ${EndIf}
    ${GetParent} $0 $0
    ${If} $0 == ""
      ${ExitDo}
    ${EndIf}
  ${Loop}
  ClearErrors
  Pop $0
FunctionEnd

!macroend
!insertmacro SharedWork ""
!insertmacro SharedWork "un."

!include "${__FILEDIR__}\Install.nsh"
!include "${__FILEDIR__}\Uninstall.nsh"
