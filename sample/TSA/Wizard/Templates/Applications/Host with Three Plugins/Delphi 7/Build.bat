@echo off
rem Builds the #Product.Name# projects for Delphi 7 with the command-line compiler.
rem Run it from a command prompt that finds dcc32 on its PATH.
setlocal
pushd "%~dp0Win32\Host" || goto failed
dcc32 -B -Q vrHost_ProjectName.dpr || goto failed
popd
for %%N in (1 2 3) do call :plugin %%N || goto failed
echo All projects of #Product.Name# were built.
exit /b 0

:plugin
pushd "%~dp0Win32\Plugins\Plugin%1" || exit /b 1
dcc32 -B -Q vrProjects_Prefix_Pin%1.dpr
set RESULT=%ERRORLEVEL%
popd
exit /b %RESULT%

:failed
echo Build failed.
exit /b 1
