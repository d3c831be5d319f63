; The installer. makensis -DPASTA=folder with everything -DNIVEIS=file of start-menu entries -DSAIDA=installer
; Silent with /S; another place with /D=
Target amd64-unicode
Unicode true
!include LogicLib.nsh
!include x64.nsh

Name "Quorel"
OutFile "${SAIDA}"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
XPStyle on
BrandingText " "

LoadLanguageFile "${NSISDIR}/Contrib/Language files/PortugueseBR.nlf"
Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!define CHAVE "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorel"
!define AMBIENTE "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define MENU "$SMPROGRAMS\Quorel"

Function .onInit
    SetShellVarContext all
    SetRegView 64
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR "$APPDATA\Quorel" ; with all users' context: ProgramData
    ${EndIf}
FunctionEnd

!macro avisaAmbiente ; programs started from now on see the variable
    SendMessage 0xffff 0x1A 0 "STR:Environment" /TIMEOUT=2000
!macroend

; One key of the configuration, pointing into the installation.
!macro chave NOME VALOR
    FileWrite $0 "${NOME}=${VALOR}$\r$\n"
!macroend

Section "Quorel"
    SetShellVarContext all
    SetRegView 64
    SetOutPath "$INSTDIR"
    File /r /x Cadastros.mdb /x *.cmd /x zeto_cnf.txt "${PASTA}/*"
    ; A register that is there holds what a school has written.
    ${IfNot} ${FileExists} "$INSTDIR\Cadastros.mdb"
        File "${PASTA}/Cadastros.mdb"
    ${EndIf}

    FileOpen $0 "$INSTDIR\zeto_cnf.txt" w
    FileWrite $0 "[zeto]$\r$\n"
    !insertmacro chave ZETO "$INSTDIR\QUOREL2001"
    !insertmacro chave ZETO_CFG "$INSTDIR\QUOREL2001\cfg"
    !insertmacro chave ZETO_EXE "$INSTDIR\QUOREL2001\exe"
    !insertmacro chave ZETO_MM "$INSTDIR\QUOREL2001\zeto_mm"
    !insertmacro chave ZETO_MDB "$INSTDIR\QUOREL2001"
    !insertmacro chave ZETO_CAD "$INSTDIR"
    !insertmacro chave ZETO_ALUNOS "$INSTDIR"
    !insertmacro chave DirWin "$INSTDIR"
    !insertmacro chave DIRQUOREL "$INSTDIR\QUOREL2001"
    !insertmacro chave DBBLOCOS "$INSTDIR\QUOREL2001\DBBLOCOS"
    FileClose $0

    ; A pupil's account writes the register, the teacher's list and the configuration.
    nsExec::Exec 'icacls "$INSTDIR" /grant *S-1-5-32-545:(OI)(CI)M /Q'
    Pop $1

    WriteRegExpandStr HKLM "${AMBIENTE}" QUOREL_WINDIR "$INSTDIR"
    !insertmacro avisaAmbiente

    CreateDirectory "${MENU}"
    SetOutPath "$INSTDIR\QUOREL2001\exe"
    !include "${NIVEIS}"

    WriteUninstaller "$INSTDIR\desinstala.exe"
    WriteRegStr HKLM "${CHAVE}" DisplayName "Quorel"
    WriteRegStr HKLM "${CHAVE}" UninstallString '"$INSTDIR\desinstala.exe"'
    WriteRegStr HKLM "${CHAVE}" QuietUninstallString '"$INSTDIR\desinstala.exe" /S'
    WriteRegStr HKLM "${CHAVE}" InstallLocation "$INSTDIR"
    WriteRegDWORD HKLM "${CHAVE}" NoModify 1
    WriteRegDWORD HKLM "${CHAVE}" NoRepair 1
SectionEnd

; The register and the teacher's list stay.
Section "Uninstall"
    SetShellVarContext all
    SetRegView 64
    SetOutPath "$TEMP"
    RMDir /r "${MENU}"
    CopyFiles /SILENT "$INSTDIR\QUOREL2001\RotSelec.cfg" "$INSTDIR\RotSelec.cfg"
    RMDir /r "$INSTDIR\QUOREL2001"
    ${If} ${FileExists} "$INSTDIR\RotSelec.cfg"
        CreateDirectory "$INSTDIR\QUOREL2001"
        Rename "$INSTDIR\RotSelec.cfg" "$INSTDIR\QUOREL2001\RotSelec.cfg"
    ${EndIf}
    RMDir /r "$INSTDIR\licencas"
    Delete "$INSTDIR\zeto_cnf.txt"
    Delete "$INSTDIR\desinstala.exe"
    RMDir "$INSTDIR\Temp"
    RMDir "$INSTDIR"
    DeleteRegValue HKLM "${AMBIENTE}" QUOREL_WINDIR
    !insertmacro avisaAmbiente
    DeleteRegKey HKLM "${CHAVE}"
SectionEnd
