; The installer of Zelkora for 64-bit Windows, made by makensis (Debian's
; nsis) from the files scripts/windows-package.sh puts together:
;
;   makensis -INPUTCHARSET UTF8 -DVERSION=0.1.0 -DSTAGE=/path/to/files \
;            -DOUTFILE=/path/to/zelkora-0.1.0-windows-x64-setup.exe zelkora.nsi
;
; A per-user install, without administrator rights: the programs in
; %LOCALAPPDATA%\Programs\Zelkora, start-menu entries, the .zks project files
; opened by zelkora-desk.exe (HKCU\Software\Classes) and an entry among the
; installed apps (HKCU\...\Uninstall\Zelkora). The uninstaller removes what
; was installed, file by file; the user's projects and settings (the
; registry key of the programs' settings, ZK_History.INI and ZK_Form.INI in
; the program folder) stay.
;
; Silent: setup.exe /S [/D=FOLDER]; uninstall.exe /S [_?=FOLDER] (with _?=
; it runs in place and returns when done, leaving itself behind).

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!ifndef VERSION
  !error "VERSION is not defined (makensis -DVERSION=...)"
!endif
!ifndef STAGE
  !error "STAGE, the folder of the files to install, is not defined"
!endif
!ifndef OUTFILE
  !define OUTFILE "zelkora-${VERSION}-windows-x64-setup.exe"
!endif

!define PRODUCT "Zelkora"
!define PRODUCT_TITLE "Zelkora 结构快速设计"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelkora"
!define PROGID "Zelkora.Project"
!define EXTENSION ".zks"
!define MENU_FOLDER "$SMPROGRAMS\Zelkora"

Name "${PRODUCT_TITLE} ${VERSION}"
OutFile "${OUTFILE}"
InstallDir "$LOCALAPPDATA\Programs\Zelkora"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Zelkora ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=2052 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=2052 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "FileDescription" "${PRODUCT_TITLE} 安装程序"
VIAddVersionKey /LANG=2052 "CompanyName" "Zelkora"
VIAddVersionKey /LANG=2052 "LegalCopyright" "Zelkora"

!include "MUI2.nsh"

!define MUI_ABORTWARNING
!define MUI_ICON "${__FILEDIR__}\..\..\win32desk\zelkora-desk.ico"
!define MUI_UNICON "${NSISDIR}\Contrib\Graphics\Icons\modern-uninstall.ico"

!define MUI_WELCOMEPAGE_TITLE "$(ZkWelcomeTitle)"
!define MUI_WELCOMEPAGE_TEXT "$(ZkWelcomeText)"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\zelkora-desk.exe"
!define MUI_FINISHPAGE_RUN_TEXT "$(ZkRunNow)"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\readme.txt"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(ZkShowReadme)"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(ZkUninstallTop)"
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "SimpChinese"

LangString ZkWelcomeTitle ${LANG_SIMPCHINESE} "安装 ${PRODUCT_TITLE} ${VERSION}"
LangString ZkWelcomeText ${LANG_SIMPCHINESE} "本程序将把 Zelkora 的桌面程序 zelkora-desk.exe 和命令行工具 zelkora.exe 安装到您的用户文件夹中，不需要管理员权限。$\r$\n$\r$\n安装后，开始菜单中有 Zelkora 的程序和卸载项，双击 .zks 项目文件即可用 zelkora-desk.exe 打开。$\r$\n$\r$\n单击“下一步”继续。"
LangString ZkRunNow ${LANG_SIMPCHINESE} "现在运行 ${PRODUCT_TITLE}"
LangString ZkShowReadme ${LANG_SIMPCHINESE} "查看说明 readme.txt"
LangString ZkUninstallTop ${LANG_SIMPCHINESE} "将从下面的文件夹中删除 Zelkora 安装的文件、开始菜单项和 .zks 文件关联。您的项目文件和设置（最近的项目、我的默认值、界面设置）不会被删除。"
LangString ZkProjectType ${LANG_SIMPCHINESE} "Zelkora 项目文件"
LangString ZkMenuProgram ${LANG_SIMPCHINESE} "${PRODUCT_TITLE}"
LangString ZkMenuUninstall ${LANG_SIMPCHINESE} "卸载 Zelkora"
LangString ZkMenuReadme ${LANG_SIMPCHINESE} "Zelkora 说明"
LangString ZkInUse ${LANG_SIMPCHINESE} "Zelkora 的程序（zelkora-desk.exe 或 zelkora.exe）正在运行，无法删除。请关闭它后单击“重试”，或单击“取消”退出卸载。"
LangString ZkKeptFiles ${LANG_SIMPCHINESE} "文件夹 $INSTDIR 中还有您的文件（项目、设置），已保留。"

; Deletes one of the programs, unless it is running: then asks to close it
; and try again (silent: gives up, exit code 2), before anything is removed.
!macro DeleteProgram ID NAME
  retry_${ID}:
  ClearErrors
  Delete "$INSTDIR\${NAME}"
  IfErrors 0 deleted_${ID}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(ZkInUse)" /SD IDCANCEL IDRETRY retry_${ID}
    Abort "$(ZkInUse)"
  deleted_${ID}:
!macroend

; Tells the shell that the file associations changed (SHCNE_ASSOCCHANGED).
!macro NotifyAssociations
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section "Zelkora" SecMain
  SectionIn RO
  SetShellVarContext current
  SetOutPath "$INSTDIR"
  File "${STAGE}\zelkora-desk.exe"
  File "${STAGE}\zelkora.exe"
  File "${STAGE}\readme.txt"
  SetOutPath "$INSTDIR\licenses"
  File "${STAGE}\licenses\zlib.txt"
  File "${STAGE}\licenses\mingw-w64-runtime.txt"
  File "${STAGE}\licenses\gcc-runtime.txt"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "${MENU_FOLDER}"
  CreateShortcut "${MENU_FOLDER}\$(ZkMenuProgram).lnk" "$INSTDIR\zelkora-desk.exe"
  CreateShortcut "${MENU_FOLDER}\$(ZkMenuReadme).lnk" "$INSTDIR\readme.txt"
  CreateShortcut "${MENU_FOLDER}\$(ZkMenuUninstall).lnk" "$INSTDIR\uninstall.exe"

  ; The project files: .zks -> Zelkora.Project, opened by zelkora-desk.exe.
  WriteRegStr HKCU "Software\Classes\${EXTENSION}" "" "${PROGID}"
  WriteRegStr HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${PROGID}" ""
  WriteRegStr HKCU "Software\Classes\${PROGID}" "" "$(ZkProjectType)"
  WriteRegStr HKCU "Software\Classes\${PROGID}\DefaultIcon" "" "$INSTDIR\zelkora-desk.exe,0"
  WriteRegStr HKCU "Software\Classes\${PROGID}\shell\open\command" "" \
    '"$INSTDIR\zelkora-desk.exe" "%1"'
  !insertmacro NotifyAssociations

  ; The entry among the installed apps.
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT_TITLE}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Zelkora"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\zelkora-desk.exe,0"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${SecMain} $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

; Exactly what the section above installed; the folders only when empty, so
; that projects and settings kept in them stay.
Section "Uninstall"
  SetShellVarContext current
  !insertmacro DeleteProgram desk "zelkora-desk.exe"
  !insertmacro DeleteProgram tool "zelkora.exe"
  Delete "$INSTDIR\readme.txt"
  Delete "$INSTDIR\licenses\zlib.txt"
  Delete "$INSTDIR\licenses\mingw-w64-runtime.txt"
  Delete "$INSTDIR\licenses\gcc-runtime.txt"
  RMDir "$INSTDIR\licenses"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  IfFileExists "$INSTDIR\*.*" 0 +2
    DetailPrint "$(ZkKeptFiles)"

  Delete "${MENU_FOLDER}\$(ZkMenuProgram).lnk"
  Delete "${MENU_FOLDER}\$(ZkMenuReadme).lnk"
  Delete "${MENU_FOLDER}\$(ZkMenuUninstall).lnk"
  RMDir "${MENU_FOLDER}"

  ; The association, unless another program took .zks over since.
  DeleteRegKey HKCU "Software\Classes\${PROGID}"
  DeleteRegValue HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${PROGID}"
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}\OpenWithProgids"
  ReadRegStr $0 HKCU "Software\Classes\${EXTENSION}" ""
  StrCmp $0 "${PROGID}" 0 +2
    DeleteRegValue HKCU "Software\Classes\${EXTENSION}" ""
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}"
  !insertmacro NotifyAssociations

  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
