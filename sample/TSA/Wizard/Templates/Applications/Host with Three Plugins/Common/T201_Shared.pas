{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - declarations shared by the host and its plug-ins
  ----------------------------------------------------------------------------
  Author:     #Author#
  Copyright:  #Copyright#
  Company:    #Company.Name#, #Custom.Website#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)
  ============================================================================ }
{$ENDIF}
unit vrProjects_Prefix_Shared;

{$I TsaOptions.inc}

interface

const
  cProductName = '#Product.Name#';
  cCompanyName = '#Company.Name#';
  cCopyright   = '#Copyright#';
  cPluginExt   = '.#Manager.PluginExtension#';
{$IFDEF ddTsa2205}
  cFramework   = 'Tessera #TSA.Version#';
{$ELSE}
  cFramework   = 'Tessera';
{$ENDIF}

  { Commands that the host sends to its plug-ins. }
  cmdOpenWindow = 'OpenWindow';
  cmdGetInfo    = 'GetInfo';

{ File mask that finds the plug-ins of this product in Folder. }
function PluginFileMask(const Folder: string): string;

{ One-line description of a plug-in, as the host lists it. }
function PluginCaption(const Name, Version: string): string;

implementation

uses
  SysUtils;

function PluginFileMask(const Folder: string): string;
begin
  Result := IncludeTrailingPathDelimiter(Folder) + '*' + cPluginExt;
end;

function PluginCaption(const Name, Version: string): string;
begin
  Result := Format('%s %s (%s)', [Name, Version, cFramework]);
end;

end.
