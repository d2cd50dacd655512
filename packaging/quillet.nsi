; The setup: both editions of the program, for one person, without an administrator's rights.
; scripts/package.sh gives VERSION, ROOT (of the sources), TARGET (the setup's file), STAGED (a folder for each edition, and the list
; of files) and, when the 32-bit edition is inside, X86.
;
;   /S            asks nothing; the exit code is 0 when the program is in its folder, else 2
;   /X86=1, =0    the 32-bit edition or the 64-bit one, whatever is there
;   /D=FOLDER     where to; the last word, without quotes
;   Uninstall.exe /S [/PURGE]   with /PURGE messages, settings and skins go too
;
; No message store is ever written or, without /PURGE or its box, deleted. Every file of a release bears the same
; time: what bears another than Quillet.exe beside it has been changed by somebody, and stays.
Target amd64-unicode
SetCompressor /SOLID lzma
Name "Quillet"
OutFile "${TARGET}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Quillet"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillet"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
AllowSkipFiles off
ManifestDPIAware true
ManifestSupportedOS Win10
BrandingText "Quillet ${VERSION}"

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "Quillet"
VIAddVersionKey "FileDescription" "Setup of Quillet, a desktop manager for a handset's short messages"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Quillet authors, MIT license"
VIAddVersionKey "ProductName" "Quillet"
VIAddVersionKey "ProductVersion" "${VERSION}"

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include Sections.nsh
!include "${STAGED}/files.nsh"

!define MUI_ICON "${ROOT}/assets/quillet.ico"
!define MUI_UNICON "${ROOT}/assets/quillet.ico"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE checkFolder
!insertmacro MUI_PAGE_DIRECTORY
!ifdef X86
  !define MUI_COMPONENTSPAGE_TEXT_TOP "A library for a handset works only in the edition of its own kind: the 32-bit one is for a 32-bit phone-link library."
  !insertmacro MUI_PAGE_COMPONENTS
!endif
!insertmacro MUI_PAGE_INSTFILES
!define MUI_COMPONENTSPAGE_TEXT_TOP "Messages, settings and skins stay in the folder unless you choose to delete them."
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var shippedTime  ; of the release that is there already

; One file of the release, and one that a person may change.
!macro put folder file
  SetOutPath "$INSTDIR\${folder}"
  File "${STAGED}/${EDITION}/Quillet/${folder}${file}"
!macroend
!macro remove folder file
  Delete "$INSTDIR\${folder}${file}"
!macroend
!macro ifAsShipped do folder file
  GetFileTime "$INSTDIR\${folder}${file}" $0 $1
  ${If} "$0 $1" == $shippedTime
  ${OrIfNot} ${FileExists} "$INSTDIR\${folder}${file}"
    !insertmacro ${do} "${folder}" "${file}"
  ${Else}
    DetailPrint "Kept: ${folder}${file}"
  ${EndIf}
!macroend
!macro putUnlessChanged folder file
  !insertmacro ifAsShipped put "${folder}" "${file}"
!macroend
!macro removeUnlessChanged folder file
  !insertmacro ifAsShipped remove "${folder}" "${file}"
!macroend
!macro removeFolder folder
  RMDir "$INSTDIR\${folder}"  ; when it is empty
!macroend

; Asks the program that runs in the folder to close, and waits until it does. It stays when a dialog is open, which
; may hold a text that is nowhere else. Whoever runs holds the lock file; one that can be deleted is nobody's.
!macro closeRunning un
Function ${un}closeRunning
  ${Do}
    StrCpy $0 0
    ${Do}
      FindWindow $0 "QuilletFrame" "" 0 $0
      ${If} $0 == 0
        ${ExitDo}
      ${EndIf}
      System::Call 'user32::GetWindowThreadProcessId(p $0, *i .r1)'
      System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r1) p .r1'
      System::Call 'kernel32::QueryFullProcessImageNameW(p r1, i 0, w .r2, *i ${NSIS_MAX_STRLEN})'
      System::Call 'kernel32::CloseHandle(p r1)'
      ${If} $2 == "$INSTDIR\Quillet.exe"
        System::Call 'user32::PostMessageW(p $0, i ${WM_CLOSE}, p 0, p 0)'
      ${EndIf}
    ${Loop}
    ${For} $0 1 100
      Delete "$INSTDIR\Quillet.lock"
      ${IfNot} ${FileExists} "$INSTDIR\Quillet.lock"
        Return
      ${EndIf}
      Sleep 100
    ${Next}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Quillet is still running. Close it, and press Retry. Nothing has been changed." /SD IDCANCEL IDRETRY +2
    Abort "Quillet is still running."
  ${Loop}
FunctionEnd
!macroend
!insertmacro closeRunning ""
!insertmacro closeRunning "un."

; Of a page it keeps the page, of a section it ends the setup.
!macro refuse text
  MessageBox MB_OK|MB_ICONEXCLAMATION "${text}" /SD IDOK
  Abort "${text}"
!macroend

Function checkFolder
  StrLen $0 $INSTDIR
  ${If} $0 > 200
    !insertmacro refuse "The name of this folder is longer than 200 characters. Choose a shorter one."
  ${EndIf}
  ClearErrors
  CreateDirectory $INSTDIR
  GetTempFileName $0 $INSTDIR
  ${If} ${Errors}
    !insertmacro refuse "Nothing can be written in this folder:$\n$INSTDIR$\n$\nChoose one that is yours."
  ${EndIf}
  Delete $0
  RMDir $INSTDIR
FunctionEnd

!macro checkFile file
  ${If} ${FileExists} "$INSTDIR\${file}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${file}" a
    ${If} ${Errors}
      !insertmacro refuse "${file} is in use, or may not be changed. Nothing has been changed."
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section "-Before"
  Call checkFolder
  Call closeRunning
  !insertmacro checkFile "Quillet.exe"
  !insertmacro checkFile "findport.exe"
  !insertmacro checkFile "SMS_DLL2.dll"
  GetFileTime "$INSTDIR\Quillet.exe" $0 $1
  StrCpy $shippedTime "$0 $1"
SectionEnd

; Quillet.exe comes last: until then a setup that was broken off still knows the former release.
Section "Quillet, 64-bit" edition64
  !define EDITION x64
  !insertmacro files put putUnlessChanged
  !insertmacro put "" "Quillet.exe"
  !undef EDITION
  WriteRegStr HKCU "${KEY}" "Edition" "x64"
SectionEnd

!ifdef X86
Section /o "Quillet, 32-bit: for a 32-bit phone-link library" edition32
  !define EDITION x86
  !insertmacro files put putUnlessChanged
  !insertmacro put "" "Quillet.exe"
  !undef EDITION
  WriteRegStr HKCU "${KEY}" "Edition" "x86"
SectionEnd
!endif

Section "-After"
  SetOutPath $INSTDIR  ; where the shortcuts start the program
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateDirectory "$SMPROGRAMS\Quillet"
  CreateShortcut "$SMPROGRAMS\Quillet\Quillet.lnk" "$INSTDIR\Quillet.exe"
  CreateShortcut "$SMPROGRAMS\Quillet\Quillet without phone.lnk" "$INSTDIR\Quillet.exe" "/offline"
  WriteRegStr HKCU "${KEY}" "DisplayName" "Quillet"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\Quillet.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "Quillet"
  WriteRegStr HKCU "${KEY}" "InstallLocation" $INSTDIR
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

!ifdef X86
Var edition

; An update stays with the edition that is there.
Function .onInit
  StrCpy $edition ${edition64}
  ReadRegStr $0 HKCU "${KEY}" "Edition"
  ${GetParameters} $1
  ${GetOptions} $1 "/X86=" $2
  ${If} $2 == 1
  ${OrIf} "$2 $0" == " x86"
    StrCpy $edition ${edition32}
    !insertmacro UnselectSection ${edition64}
    !insertmacro SelectSection ${edition32}
  ${EndIf}
FunctionEnd

Function .onSelChange
  !insertmacro StartRadioButtons $edition
    !insertmacro RadioButton ${edition64}
    !insertmacro RadioButton ${edition32}
  !insertmacro EndRadioButtons
FunctionEnd
!endif

Section "un.Program" program
  SectionIn RO
  Call un.closeRunning
  GetFileTime "$INSTDIR\Quillet.exe" $0 $1
  StrCpy $shippedTime "$0 $1"
  !insertmacro files remove removeUnlessChanged
  Delete "$INSTDIR\Quillet.exe"
  Delete "$INSTDIR\Uninstall.exe"
  ReadRegStr $0 HKCU "${KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Delete "$SMPROGRAMS\Quillet\Quillet.lnk"
    Delete "$SMPROGRAMS\Quillet\Quillet without phone.lnk"
    RMDir "$SMPROGRAMS\Quillet"
    DeleteRegKey HKCU "${KEY}"
  ${EndIf}
SectionEnd

Section /o "un.My messages, settings and skins" purge
  MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONEXCLAMATION "Delete your messages in$\n$INSTDIR?$\n$\nThose of the folders on the PC exist nowhere else." /SD IDYES IDNO kept
  Delete "$INSTDIR\pcInbox.dat"
  Delete "$INSTDIR\pcSent.dat"
  Delete "$INSTDIR\pcDraft.dat"
  Delete "$INSTDIR\pcInbox.dat.*"
  Delete "$INSTDIR\pcSent.dat.*"
  Delete "$INSTDIR\pcDraft.dat.*"
  Delete "$INSTDIR\port.ini"
  Delete "$INSTDIR\handset.txt"
  Delete "$INSTDIR\SMS_DLL2.dll"
  Delete "$INSTDIR\zelSMS.dll"
  RMDir /r "$INSTDIR\Skin\Default\SMS"
  kept:
SectionEnd

Section "-un.After"
  SetOutPath $TEMP  ; a folder where a program stands cannot go
  !insertmacro folders removeFolder
  RMDir $INSTDIR
SectionEnd

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PURGE" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${purge}
  ${EndIf}
FunctionEnd
