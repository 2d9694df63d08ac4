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
  Windows, SysUtils, Classes, qrxTsaPlugin;

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
  PluginForm;

{$R *.dfm}

function RegisterTessera(AOwner: TComponent): TComponent; stdcall;
begin
{$IFDEF ddUseTLG}
  {$IFDEF ddLogPinCreation}TslLog.Msg('RegisterTessera: creating #Plugin.ProjectName#');{$ENDIF}
{$ENDIF}
  if dmPlugin = nil then
    dmPlugin := TdmPlugin.Create(AOwner);
  Result := dmPlugin.tsaPlugin;
end;

procedure TdmPlugin.DataModuleCreate(Sender: TObject);
begin
  tsaPlugin.Active := True;
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
  TslLog.Enter('PluginModule.TdmPlugin.tsaPluginCommand');
  {$IFDEF ddLogComments}TslLog.Msg('Command: ' + Command);{$ENDIF}
{$ENDIF}
  Handled := SameText(Command, 'OpenWindow');
  if Handled then
    TfrmPlugin.ShowFor(HWND(Param));
{$IFDEF ddUseTLG}
  TslLog.Leave('PluginModule.TdmPlugin.tsaPluginCommand');
{$ENDIF}
end;

end.
