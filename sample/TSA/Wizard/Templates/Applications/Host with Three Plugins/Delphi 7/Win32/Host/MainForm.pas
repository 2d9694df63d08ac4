{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - main window
  ----------------------------------------------------------------------------
  Project:    #Host.ProjectName#
  Version:    #Manager.Version#
  Author:     #Manager.Author#
  Copyright:  #Manager.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)
  ============================================================================ }
{$ENDIF}
unit MainForm;

interface

uses
  Windows, Messages, SysUtils, Classes, Graphics, Controls, Forms, Dialogs,
  StdCtrls, ExtCtrls;

type
  TfrmMain = class(TForm)
    panTop: TPanel;
    labTitle: TLabel;
    btnReload: TButton;
    btnOpen: TButton;
    lstPlugins: TListBox;
    memLog: TMemo;
    procedure FormCreate(Sender: TObject);
    procedure btnReloadClick(Sender: TObject);
    procedure btnOpenClick(Sender: TObject);
  private
    procedure AddLine(const Text: string);
    procedure LoadPlugins;
  end;

var
  frmMain: TfrmMain;

implementation

uses
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  vrProjects_Prefix_Shared, ManagerModule;

{$R *.dfm}

const
  cUnit = 'MainForm.TfrmMain';

procedure TfrmMain.AddLine(const Text: string);
begin
  memLog.Lines.Add(FormatDateTime('hh:nn:ss', Now) + '  ' + Text);
end;

procedure TfrmMain.FormCreate(Sender: TObject);
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.FormCreate');
{$ENDIF}
  Caption := '#Custom.MainCaption#';
  labTitle.Caption := cProductName + ' #Manager.Version#';
  AddLine(cCopyright);
{$IFDEF DEBUG}
  AddLine('Debug build; plug-in folder: ' + dmManager.PluginFolder);
{$ENDIF}
  LoadPlugins;
{$IFDEF ddUseTLG}
  TslLog.Leave(cUnit + '.FormCreate');
{$ENDIF}
end;

procedure TfrmMain.LoadPlugins;
var
  Files: TStrings;
  I: Integer;
begin
{$IFDEF ddUseTLG}
  TslLog.Enter(cUnit + '.LoadPlugins');
{$ENDIF}
  lstPlugins.Items.Clear;
  Files := TStringList.Create;
  try
    dmManager.FindPluginFiles(Files);
    AddLine(Format('%d plug-in file(s) *%s in %s',
      [Files.Count, cPluginExt, dmManager.PluginFolder]));
    for I := 0 to Files.Count - 1 do
      if dmManager.LoadPlugin(Files[I]) then
        lstPlugins.Items.Add(ExtractFileName(Files[I]))
      else
        AddLine('Could not load ' + Files[I]);
{$IFDEF ddUseTLG}
    {$IFDEF ddLogComments}TslLog.Msg(Format('%d plug-in(s) loaded', [lstPlugins.Items.Count]));{$ENDIF}
{$ENDIF}
  finally
    Files.Free;
  end;
{$IFDEF ddUseTLG}
  TslLog.Leave(cUnit + '.LoadPlugins');
{$ENDIF}
end;

procedure TfrmMain.btnReloadClick(Sender: TObject);
begin
  dmManager.UnloadPlugins;
  LoadPlugins;
end;

procedure TfrmMain.btnOpenClick(Sender: TObject);
begin
  if lstPlugins.ItemIndex < 0 then
    Exit;
  if not dmManager.SendCommand(lstPlugins.ItemIndex, cmdOpenWindow, Handle) then
    AddLine('The plug-in did not answer "' + cmdOpenWindow + '".');
end;

end.
