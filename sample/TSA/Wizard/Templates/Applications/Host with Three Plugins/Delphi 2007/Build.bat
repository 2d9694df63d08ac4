@echo off
rem Builds the #Product.Name# project group for Delphi 2007 with MSBuild.
rem Run it from the RAD Studio command prompt, which sets up MSBuild and the compiler.
msbuild "%~dp0Win32\vrProjects_Prefix_Group.groupproj" /t:Build /p:Config=Release
if errorlevel 1 (
  echo Build failed.
  exit /b 1
)
echo All projects of #Product.Name# were built.
