{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - plug-in manager
  ----------------------------------------------------------------------------
  Project:    #Host.ProjectName#
  Version:    #Manager.Version#
  Author:     #Manager.Author#
  Copyright:  #Manager.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)
  ============================================================================ }
{$ENDIF}
unit ManagerModule;

interface

uses
  Windows, SysUtils, Classes, qrxTsaManager;

type
  TdmManager = class(TDataModule)
    tsaManager: TqrxTsaMan;
    procedure DataModuleCreate(Sender: TObject);
    procedure DataModuleDestroy(Sender: TObject);
  public
    function PluginFolder: string;
    procedure FindPluginFiles(Files: TStrings);
    function LoadPlugin(const FileName: string): Boolean;
    procedure UnloadPlugins;
    function SendCommand(Index: Integer; const Command: string; Param: HWND): Boolean;
  end;

var
  dmManager: TdmManager;

implementation

uses
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  vrProjects_Prefix_Shared;

{$R *.dfm}

const
  cUnit = 'ManagerModule.TdmManager';

procedure TdmManager.DataModuleCreate(Sender: TObject);
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.DataModuleCreate');
  {$IFDEF ddLogComments}TslLog.Msg('Manager #Manager.Version# looks for *' + cPluginExt + ' files');{$ENDIF}
{$ENDIF}
  tsaManager.Active := True;
{$IFDEF ddUseTLG}
  TslLog.Leave(cUnit + '.DataModuleCreate');
{$ENDIF}
end;

procedure TdmManager.DataModuleDestroy(Sender: TObject);
begin
  UnloadPlugins;
  tsaManager.Active := False;
end;

function TdmManager.PluginFolder: string;
begin
  // The framework resolves names such as %HostAppDir% in its folders.
  Result := IncludeTrailingPathDelimiter(tsaManager.ExpandPath(tsaManager.PluginFolder));
end;

procedure TdmManager.FindPluginFiles(Files: TStrings);
var
  Rec: TSearchRec;
begin
  Files.Clear;
  if FindFirst(PluginFileMask(PluginFolder), faAnyFile and not faDirectory, Rec) = 0 then
  try
    repeat
      Files.Add(PluginFolder + Rec.Name);
    until FindNext(Rec) <> 0;
  finally
    FindClose(Rec);
  end;
end;

function TdmManager.LoadPlugin(const FileName: string): Boolean;
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.LoadPlugin');
{$ENDIF}
  Result := tsaManager.LoadPlugin(FileName) >= 0;
{$IFDEF ddUseTLG}
  {$IFDEF ddLogFunctionResults}TslLog.Msg('LoadPlugin(' + FileName + ') = ' + BoolToStr(Result, True));{$ENDIF}
  TslLog.Leave(cUnit + '.LoadPlugin');
{$ENDIF}
end;

procedure TdmManager.UnloadPlugins;
begin
  while tsaManager.PluginCount > 0 do
    tsaManager.UnloadPlugin(tsaManager.PluginCount - 1);
end;

function TdmManager.SendCommand(Index: Integer; const Command: string; Param: HWND): Boolean;
begin
  Result := (Index >= 0) and (Index < tsaManager.PluginCount) and
    (tsaManager.SendCommand(Index, Command, Param) = 0);
end;

end.
