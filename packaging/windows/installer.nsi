; For one user, without administrator's rights. VERSION, FOLDER (what is installed) and OUTPUT are given.
Unicode true
Target amd64-unicode
Name "Torvex control"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\torvex-control"
InstallDirRegKey HKCU "Software\torvex-control" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma
Icon "${ICON}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "torvex-control"
VIAddVersionKey "FileDescription" "Installer of Torvex control"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\torvex-control"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Section
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "Software\torvex-control" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Torvex control"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\torvex-control.exe"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  ; The program works in the folder that it is started in: the user's configuration is there.
  CreateDirectory "$DOCUMENTS\Torvex cockpit"
  SetOutPath "$DOCUMENTS\Torvex cockpit"
  CreateShortcut "$SMPROGRAMS\Torvex control.lnk" "$INSTDIR\torvex-control.exe"
SectionEnd

; Takes away what was installed, name by name. The folder under Documents is the user's and stays.
Section Uninstall
  SetOutPath "$TEMP"
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Torvex control.lnk"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\torvex-control"
SectionEnd
