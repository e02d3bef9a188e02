; The installer for Windows. make-package calls makensis with
;   VERSION       for example 1.10, and VERSION_NUMBERS the same with four numbers
;   ICON, SIDE    the program's icon and the picture of the first and last page
;   FILES_IN      an include that unpacks the program's files, made from what is packed
;   FILES_OUT     an include that removes exactly those again
;   INSTALLER     the file to write
; Silent: veltrix-setup.exe /S [/D=folder]; uninstall.exe /S [/REMOVEDATA]
; Status: 0 done, 1 cancelled by the user, 2 not done (the program runs, or its folder cannot be written).
Unicode true
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel admin ; the start at log-on is machine-wide, and so are the files

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Veltrix"
!define RUN_KEY "SOFTWARE\Microsoft\Windows\CurrentVersion\Run"

Name "Veltrix"
OutFile "${INSTALLER}"
InstallDir "$PROGRAMFILES64\Veltrix"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Veltrix ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION_NUMBERS}"
VIAddVersionKey "ProductName" "Veltrix"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Veltrix Setup"
VIAddVersionKey "CompanyName" "The Veltrix developers"
VIAddVersionKey "LegalCopyright" "Copyright (c) 2026 The Veltrix developers"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION startAsTheUser
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running program keeps its file from being written. It gets the time to end by itself: the updater starts the
; installer while the program quits.
!macro WAIT_UNTIL_ENDED
    StrCpy $R1 0
    ${DoWhile} ${FileExists} "$INSTDIR\veltrix.exe"
        ClearErrors
        FileOpen $R0 "$INSTDIR\veltrix.exe" a
        ${IfNot} ${Errors}
            FileClose $R0
            ; Its helper ends a moment after it.
            ${IfNot} ${FileExists} "$INSTDIR\veltrix-release.exe"
                ${ExitDo}
            ${EndIf}
            FileOpen $R0 "$INSTDIR\veltrix-release.exe" a
            ${IfNot} ${Errors}
                FileClose $R0
                ${ExitDo}
            ${EndIf}
        ${EndIf}
        Sleep 500
        IntOp $R1 $R1 + 1
        ${If} $R1 >= 20
            StrCpy $R1 0
            ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Veltrix is running, or its folder cannot be written. Please choose Quit in its tray menu." /SD IDCANCEL IDCANCEL`
                SetErrorLevel 2
                Quit
            ${EndIf}
        ${EndIf}
    ${Loop}
!macroend

; The user at the desktop, who need not be the one whose password has allowed the uninstaller to run. Afterwards this thread
; works with that user's rights (so that a link among the user's files leads nowhere else), $R5 and $R6 are the roaming and
; the local data folder, $R7 is the user's key below HKU. Without a desktop they are those of the uninstaller's own user.
!macro BECOME_THE_USER
    StrCpy $R8 0 ; the token
    System::Call 'user32::GetShellWindow() p .r0'
    ${If} $0 P<> 0
        System::Call 'user32::GetWindowThreadProcessId(p r0, *i .r1)'
        System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r1) p .r2' ; PROCESS_QUERY_LIMITED_INFORMATION
        System::Call 'advapi32::OpenProcessToken(p r2, i 0xE, *p .R8) i .r3' ; duplicate, impersonate, query
        System::Call 'kernel32::CloseHandle(p r2)'
        ${If} $3 = 0
            StrCpy $R8 0
        ${EndIf}
    ${EndIf}
    StrCpy $3 $R8
    ${If} $3 P= 0
        System::Call 'kernel32::GetCurrentProcess() p .r2'
        System::Call 'advapi32::OpenProcessToken(p r2, i 8, *p .r3)'
    ${EndIf}
    System::Call 'advapi32::GetTokenInformation(p r3, i 1, p 0, i 0, *i .r4)' ; TokenUser
    System::Alloc $4
    Pop $2
    System::Call 'advapi32::GetTokenInformation(p r3, i 1, p r2, i r4, *i .r4)'
    System::Call '*$2(p .r4)'
    System::Call 'advapi32::ConvertSidToStringSidW(p r4, *p .r1)'
    System::Call '*$1(&w256 .R7)'
    System::Call 'kernel32::LocalFree(p r1)'
    System::Free $2
    System::Call 'shell32::SHGetFolderPathW(p 0, i 0x1A, p R8, i 0, w .R5)' ; CSIDL_APPDATA
    System::Call 'shell32::SHGetFolderPathW(p 0, i 0x1C, p R8, i 0, w .R6)' ; CSIDL_LOCAL_APPDATA
    ${If} $R8 P<> 0
        System::Call 'advapi32::ImpersonateLoggedOnUser(p R8)'
    ${EndIf}
!macroend

!macro BE_ONESELF_AGAIN
    ${If} $R8 P<> 0
        System::Call 'advapi32::RevertToSelf()'
        System::Call 'kernel32::CloseHandle(p R8)'
    ${EndIf}
!macroend

; Not with the rights of the installer.
Function startAsTheUser
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\veltrix.exe"'
FunctionEnd

Section
    SetShellVarContext all
    !insertmacro WAIT_UNTIL_ENDED

    ; An older version goes first, so that none of its files stays; the start at log-on and the mappings do.
    ReadRegStr $R0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $R0 != ""
    ${AndIf} ${FileExists} "$R0\uninstall.exe"
        ExecWait '"$R0\uninstall.exe" /S /UPGRADE _?=$R0' $R1
        ${If} $R1 <> 0
            MessageBox MB_OK|MB_ICONSTOP "The older version in $R0 could not be removed." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
        Delete "$R0\uninstall.exe"
        RMDir "$R0"
    ${EndIf}

    ClearErrors
    !include "${FILES_IN}"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "Some files could not be written to $INSTDIR." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}

    CreateShortcut "$SMPROGRAMS\Veltrix.lnk" "$INSTDIR\veltrix.exe"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "Veltrix"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\veltrix.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "The Veltrix developers"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
    SetShellVarContext all
    !insertmacro WAIT_UNTIL_ENDED

    !include "${FILES_OUT}"
    ${GetParameters} $R2
    ClearErrors
    ${GetOptions} $R2 "/UPGRADE" $R3
    ${IfNot} ${Errors}
        Return
    ${EndIf}

    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\Veltrix.lnk"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    DeleteRegValue HKLM "${RUN_KEY}" "Veltrix"

    ; The user's own: mappings, log and settings go only when asked for. The braces belong to the names.
    StrCpy $R4 yes
    ClearErrors
    ${GetOptions} $R2 "/REMOVEDATA" $R3
    ${If} ${Errors}
        ${If} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove your own mappings and settings as well?" /SD IDNO IDNO`
            StrCpy $R4 no
        ${EndIf}
    ${EndIf}
    !insertmacro BECOME_THE_USER
    Delete "$R6\cache\veltrix-update\veltrix-update.exe"
    RMDir "$R6\cache\veltrix-update"
    ${If} $R4 == yes
        RMDir /r "$R5\{Brimwell Labs}\{Veltrix}"
        RMDir "$R5\{Brimwell Labs}"
        DeleteRegKey HKU "$R7\Software\{Brimwell Labs}\{Veltrix}"
        DeleteRegKey /ifempty HKU "$R7\Software\{Brimwell Labs}"
    ${EndIf}
    !insertmacro BE_ONESELF_AGAIN
SectionEnd
