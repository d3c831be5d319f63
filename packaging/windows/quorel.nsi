; The installer. makensis -DPASTA=folder with everything -DLISTAS=folder of what build.sh wrote about it
; -DVERSAO=version -DTAMANHO=KB -DSAIDA=installer
; Silent with /S; another place with /D=. Exit codes: 0, 1 given up by the user, 2 not done.
Target amd64-unicode
Unicode true
!include LogicLib.nsh

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
!define POSTOS "${CHAVE}\Arquivos" ; what was laid, each with its time
!define AMBIENTE "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define MENU "$SMPROGRAMS\Quorel"

Function .onInit
    SetShellVarContext all
    SetRegView 64
    ${If} $INSTDIR == "" ; where it is already, so that a new version finds the school's register
        ReadRegStr $INSTDIR HKLM "${CHAVE}" InstallLocation
    ${EndIf}
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR "$APPDATA\Quorel" ; with all users' context: ProgramData
    ${EndIf}
FunctionEnd

!macro avisaAmbiente ; programs started from now on see the variable
    SendMessage 0xffff 0x1A 0 "STR:Environment" /TIMEOUT=2000
!macroend

; Half of a program that runs would be replaced, or left behind.
!macro livre LUGAR NOME FONTE
    ${If} ${FileExists} "$INSTDIR\${LUGAR}\${NOME}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${LUGAR}\${NOME}" a
        ${If} ${Errors}
            StrCpy $1 ocupado
        ${Else}
            FileClose $0
        ${EndIf}
    ${EndIf}
!macroend
!macro semProgramas
    ${Do}
        StrCpy $1 ""
        !define umBinario "!insertmacro livre"
        !include "${LISTAS}/binarios.nsh"
        !undef umBinario
        ${If} $1 == ""
            ${Break}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "O Quorel está em uso. Feche-o com todos os seus programas." \
            /SD IDCANCEL IDRETRY +3
        SetErrorLevel 2
        Abort "O Quorel está em uso."
    ${Loop}
!macroend

; $1: whether a file is missing or as it was laid; one that was written since is somebody's work: a lesson that a
; teacher changed, an exercise program of the school's own.
!macro intacto ARQUIVO
    StrCpy $1 sim
    ${If} ${FileExists} "$INSTDIR\${ARQUIVO}"
        GetFileTime "$INSTDIR\${ARQUIVO}" $2 $3
        ReadRegStr $0 HKLM "${POSTOS}" "${ARQUIVO}"
        ${If} $0 != "$2:$3"
            StrCpy $1 ""
        ${EndIf}
    ${EndIf}
!macroend
!macro anota ARQUIVO
    GetFileTime "$INSTDIR\${ARQUIVO}" $2 $3
    WriteRegStr HKLM "${POSTOS}" "${ARQUIVO}" "$2:$3"
!macroend

!macro poe LUGAR NOME FONTE
    SetOutPath "$INSTDIR\${LUGAR}"
    ClearErrors
    File "${PASTA}/${FONTE}"
    ${If} ${Errors}
        StrCpy $9 falhou
    ${EndIf}
!macroend
!macro poeIntacto LUGAR NOME FONTE
    !insertmacro intacto "${LUGAR}\${NOME}"
    ${If} $1 != ""
        !insertmacro poe "${LUGAR}" "${NOME}" "${FONTE}"
        !insertmacro anota "${LUGAR}\${NOME}"
    ${EndIf}
!macroend
!macro tira LUGAR NOME FONTE
    Delete "$INSTDIR\${LUGAR}\${NOME}"
!macroend
!macro tiraIntacto LUGAR NOME FONTE
    !insertmacro intacto "${LUGAR}\${NOME}"
    ${If} $1 != ""
        Delete "$INSTDIR\${LUGAR}\${NOME}"
    ${EndIf}
!macroend
!macro fazPasta LUGAR
    CreateDirectory "$INSTDIR\${LUGAR}"
!macroend
!macro tiraPasta LUGAR ; unless something is left in it
    RMDir "$INSTDIR\${LUGAR}"
!macroend
!macro atalho NOME NIVEL
    CreateShortCut "${MENU}\${NOME}.lnk" "$INSTDIR\QUOREL2001\exe\quorel.exe" \
        "/NIVEL:${NIVEL} /CFG:$INSTDIR\zeto_cnf.txt"
!macroend

; One key of the configuration, pointing into the installation.
!macro chave NOME VALOR
    FileWrite $0 "${NOME}=${VALOR}$\r$\n"
!macroend

Section "Quorel"
    SetShellVarContext all
    SetRegView 64
    !insertmacro semProgramas
    StrCpy $9 ""
    !define umaPasta "!insertmacro fazPasta"
    !include "${LISTAS}/pastas.nsh"
    !undef umaPasta
    !define umPrograma "!insertmacro poe"
    !include "${LISTAS}/programas.nsh"
    !undef umPrograma
    !define umArquivo "!insertmacro poeIntacto"
    !include "${LISTAS}/arquivos.nsh"
    !undef umArquivo
    ; A register that is there holds what a school has written.
    ${IfNot} ${FileExists} "$INSTDIR\Cadastros.mdb"
        SetOutPath "$INSTDIR"
        File "${PASTA}/Cadastros.mdb"
    ${EndIf}

    !insertmacro intacto zeto_cnf.txt
    ${If} $1 != ""
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
        !insertmacro anota zeto_cnf.txt
    ${EndIf}

    ; A pupil's account writes the register, the teacher's list and the configuration. The group has another name in
    ; each language, so its number is given.
    nsExec::Exec '"$SYSDIR\icacls.exe" "$INSTDIR" /grant *S-1-5-32-545:(OI)(CI)M /Q'
    Pop $1

    WriteRegStr HKLM "${AMBIENTE}" QUOREL_WINDIR "$INSTDIR"
    !insertmacro avisaAmbiente

    CreateDirectory "${MENU}"
    SetOutPath "$INSTDIR\QUOREL2001\exe"
    !include "${LISTAS}/niveis.nsh"

    WriteUninstaller "$INSTDIR\desinstala.exe"
    ; A pack of lessons opens by a double click.
    WriteRegStr HKLM "Software\Classes\.quorel" "" "Quorel.Pacote"
    WriteRegStr HKLM "Software\Classes\Quorel.Pacote" "" "Pacote de lições do Quorel"
    WriteRegStr HKLM "Software\Classes\Quorel.Pacote\shell\open\command" "" \
        '"$INSTDIR\QUOREL2001\exe\quorel-oficina.exe" "%1"'
    WriteRegStr HKLM "${CHAVE}" DisplayName "Quorel"
    WriteRegStr HKLM "${CHAVE}" DisplayVersion "${VERSAO}"
    WriteRegStr HKLM "${CHAVE}" DisplayIcon "$INSTDIR\QUOREL2001\exe\quorel.exe"
    WriteRegStr HKLM "${CHAVE}" Publisher "Quorel"
    WriteRegStr HKLM "${CHAVE}" UninstallString '"$INSTDIR\desinstala.exe"'
    WriteRegStr HKLM "${CHAVE}" QuietUninstallString '"$INSTDIR\desinstala.exe" /S'
    WriteRegStr HKLM "${CHAVE}" InstallLocation "$INSTDIR"
    WriteRegDWORD HKLM "${CHAVE}" EstimatedSize ${TAMANHO}
    WriteRegDWORD HKLM "${CHAVE}" NoModify 1
    WriteRegDWORD HKLM "${CHAVE}" NoRepair 1
    ${If} $9 != ""
        SetErrorLevel 2
        MessageBox MB_OK|MB_ICONSTOP "Nem todos os arquivos puderam ser gravados em $INSTDIR." /SD IDOK
    ${EndIf}
SectionEnd

; What the school wrote stays: the register, the teacher's list, lessons of its own and those that it changed.
Section "Uninstall"
    SetShellVarContext all
    DeleteRegKey HKLM "Software\Classes\.quorel"
    DeleteRegKey HKLM "Software\Classes\Quorel.Pacote"
    SetRegView 64
    !insertmacro semProgramas
    SetOutPath "$TEMP"
    RMDir /r "${MENU}"
    !define umPrograma "!insertmacro tira"
    !include "${LISTAS}/programas.nsh"
    !undef umPrograma
    !define umArquivo "!insertmacro tiraIntacto"
    !include "${LISTAS}/arquivos.nsh"
    !undef umArquivo
    Delete "$INSTDIR\QUOREL2001\zeto_cnf.txt" ; the program's own, of a start without /CFG:
    !insertmacro intacto zeto_cnf.txt
    ${If} $1 != ""
        Delete "$INSTDIR\zeto_cnf.txt"
    ${EndIf}
    Delete "$INSTDIR\desinstala.exe"
    !define umaPasta "!insertmacro tiraPasta"
    !include "${LISTAS}/pastas_de_dentro.nsh"
    !undef umaPasta
    RMDir "$INSTDIR"
    ReadRegStr $0 HKLM "${AMBIENTE}" QUOREL_WINDIR
    ${If} $0 == $INSTDIR
        DeleteRegValue HKLM "${AMBIENTE}" QUOREL_WINDIR
        !insertmacro avisaAmbiente
    ${EndIf}
    DeleteRegKey HKLM "${CHAVE}"
SectionEnd
