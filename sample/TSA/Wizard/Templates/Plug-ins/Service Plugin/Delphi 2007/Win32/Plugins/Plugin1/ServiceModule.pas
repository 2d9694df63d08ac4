{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - service module
  ----------------------------------------------------------------------------
  Project:    #Plugin.ProjectName#  (plug-in #Plugin.Index# of #Plugin.Count#)
  Plug-in:    #Plugin.DeepName#, version #Plugin.Version#
  Author:     #Plugin.Author#
  Copyright:  #Plugin.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)

  #Plugin.Description#
  ============================================================================ }
{$ENDIF}
unit ServiceModule;

interface

uses
  Windows, SysUtils, Classes, ExtCtrls, qrxTsaPlugin;

type
  TdmService = class(TDataModule)
    tsaPlugin: TtsaPlugin;
    tmrWork: TTimer;
    procedure DataModuleCreate(Sender: TObject);
    procedure DataModuleDestroy(Sender: TObject);
    procedure tmrWorkTimer(Sender: TObject);
    procedure tsaPluginCommand(Sender: TObject; const Command: string;
      Param: Integer; var Handled: Boolean);
  private
    FRuns: Integer;
    FDeleted: Integer;
    function CleanFolder(const Folder: string; MaxAgeDays: Integer): Integer;
  end;

var
  dmService: TdmService = nil;

{ Entry point that the host calls after loading this library. }
function RegisterTessera(AOwner: TComponent): TComponent; stdcall;

implementation

uses
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  DateUtils;

{$R *.dfm}

const
  cUnit = 'ServiceModule.TdmService';
  cMaxAgeDays = 7;

function RegisterTessera(AOwner: TComponent): TComponent; stdcall;
begin
{$IFDEF ddUseTLG}
  {$IFDEF ddLogPinCreation}TslLog.Msg('RegisterTessera: creating #Plugin.DeepName# #Plugin.Version#');{$ENDIF}
{$ENDIF}
  if dmService = nil then
    dmService := TdmService.Create(AOwner);
  Result := dmService.tsaPlugin;
end;

procedure TdmService.DataModuleCreate(Sender: TObject);
begin
  tsaPlugin.Active := True;
  tmrWork.Enabled := True;
end;

procedure TdmService.DataModuleDestroy(Sender: TObject);
begin
  tmrWork.Enabled := False;
  tsaPlugin.Active := False;
  dmService := nil;
end;

function TdmService.CleanFolder(const Folder: string; MaxAgeDays: Integer): Integer;
var
  Rec: TSearchRec;
  Limit: TDateTime;
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.CleanFolder');
{$ENDIF}
  Result := 0;
  Limit := IncDay(Now, -MaxAgeDays);
  if FindFirst(IncludeTrailingPathDelimiter(Folder) + '*.tmp', faAnyFile and not faDirectory, Rec) = 0 then
  try
    repeat
      if (FileDateToDateTime(Rec.Time) < Limit) and
         DeleteFile(IncludeTrailingPathDelimiter(Folder) + Rec.Name) then
        Inc(Result);
    until FindNext(Rec) <> 0;
  finally
    FindClose(Rec);
  end;
{$IFDEF ddUseTLG}
  {$IFDEF ddLogFunctionResults}TslLog.Msg(Format('CleanFolder(%s) = %d', [Folder, Result]));{$ENDIF}
  TslLog.Leave(cUnit + '.CleanFolder');
{$ENDIF}
end;

procedure TdmService.tmrWorkTimer(Sender: TObject);
begin
  Inc(FRuns);
  Inc(FDeleted, CleanFolder(GetEnvironmentVariable('TEMP'), cMaxAgeDays));
end;

procedure TdmService.tsaPluginCommand(Sender: TObject; const Command: string;
  Param: Integer; var Handled: Boolean);
begin
  Handled := SameText(Command, 'GetStatus');
  if Handled then
    tsaPlugin.Answer := Format('#Plugin.DeepName#: %d runs, %d files deleted', [FRuns, FDeleted]);
end;

initialization
{$IFDEF ddUseTLG}
  {$IFDEF ddLogInitFinit}TslLog.Msg('ServiceModule initialization');{$ENDIF}
{$ENDIF}

finalization
{$IFDEF ddUseTLG}
  {$IFDEF ddLogInitFinit}TslLog.Msg('ServiceModule finalization');{$ENDIF}
{$ENDIF}

end.
