{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - plug-in module
  ----------------------------------------------------------------------------
  Project:    #Plugin.ProjectName#  (plug-in #Plugin.Index# of #Plugin.Count#)
  Plug-in:    #Plugin.DeepName#, version #Plugin.Version#
  Author:     #Plugin.Author#
  Copyright:  #Plugin.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)

  #Plugin.Description#
  ============================================================================ }
{$ENDIF}
unit PluginModule;

interface

uses
  Windows, SysUtils, Classes, Dialogs, qrxTsaPlugin;

type
  TdmPlugin = class(TDataModule)
    tsaPlugin: TtsaPlugin;
    procedure DataModuleCreate(Sender: TObject);
    procedure DataModuleDestroy(Sender: TObject);
    procedure tsaPluginCommand(Sender: TObject; const Command: string;
      Param: Integer; var Handled: Boolean);
  end;

var
  dmPlugin: TdmPlugin = nil;

{ Entry point that the host calls after loading this library. }
function RegisterTessera(AOwner: TComponent): TComponent; stdcall;

implementation

uses
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  vrProjects_Prefix_Shared;

{$R *.dfm}

const
  cUnit = 'PluginModule.TdmPlugin';
  cPluginName = '#Plugin.DeepName#';

function RegisterTessera(AOwner: TComponent): TComponent; stdcall;
begin
{$IFDEF ddUseTLG}
  {$IFDEF ddLogPinCreation}TslLog.Msg('RegisterTessera: creating ' + cPluginName);{$ENDIF}
{$ENDIF}
  if dmPlugin = nil then
    dmPlugin := TdmPlugin.Create(AOwner);
  Result := dmPlugin.tsaPlugin;
end;

procedure TdmPlugin.DataModuleCreate(Sender: TObject);
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.DataModuleCreate');
  {$IFDEF ddLogComments}TslLog.Msg('Plug-in #Plugin.Index# of #Plugin.Count#: ' + PluginCaption(cPluginName, tsaPlugin.Version));{$ENDIF}
{$ENDIF}
  tsaPlugin.Active := True;
{$IFDEF ddUseTLG}
  TslLog.Leave(cUnit + '.DataModuleCreate');
{$ENDIF}
end;

procedure TdmPlugin.DataModuleDestroy(Sender: TObject);
begin
  tsaPlugin.Active := False;
  dmPlugin := nil;
end;

procedure TdmPlugin.tsaPluginCommand(Sender: TObject; const Command: string;
  Param: Integer; var Handled: Boolean);
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.tsaPluginCommand');
{$ENDIF}
  Handled := True;
  if SameText(Command, cmdOpenWindow) then
    ShowMessage(PluginCaption(cPluginName, tsaPlugin.Version) + sLineBreak +
      '#Plugin.Copyright#')
  else if SameText(Command, cmdGetInfo) then
    tsaPlugin.Answer := PluginCaption(cPluginName, tsaPlugin.Version)
{$IFDEF ddPluginIndex_2}
  else if SameText(Command, 'GetTime') then
    tsaPlugin.Answer := FormatDateTime('hh:nn:ss', Now)
{$ENDIF}
  else
    Handled := False;
{$IFDEF ddUseTLG}
  {$IFDEF ddLogFunctionResults}TslLog.Msg('Handled: ' + BoolToStr(Handled, True));{$ENDIF}
  TslLog.Leave(cUnit + '.tsaPluginCommand');
{$ENDIF}
end;

initialization
{$IFDEF ddUseTLG}
  {$IFDEF ddLogInitFinit}TslLog.Msg('PluginModule initialization (#Plugin.ProjectName#)');{$ENDIF}
{$ENDIF}

finalization
{$IFDEF ddUseTLG}
  {$IFDEF ddLogInitFinit}TslLog.Msg('PluginModule finalization (#Plugin.ProjectName#)');{$ENDIF}
{$ENDIF}

end.
