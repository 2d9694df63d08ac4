{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - plug-in window
  ----------------------------------------------------------------------------
  Project:    #Plugin.ProjectName#  (plug-in #Plugin.Index# of #Plugin.Count#)
  Plug-in:    #Plugin.DeepName#, version #Plugin.Version#
  Author:     #Plugin.Author#
  Copyright:  #Plugin.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)

  #Plugin.Description#
  ============================================================================ }
{$ENDIF}
unit PluginForm;

interface

uses
  Windows, Messages, SysUtils, Classes, Controls, Forms, StdCtrls;

type
  TfrmPlugin = class(TForm)
    labName: TLabel;
    labVersion: TLabel;
    labCopyright: TLabel;
    btnClose: TButton;
    procedure FormClose(Sender: TObject; var Action: TCloseAction);
    procedure FormKeyPress(Sender: TObject; var Key: Char);
    procedure btnCloseClick(Sender: TObject);
  public
    { Shows a new window of the plug-in in front of the host's window. }
    class procedure ShowFor(HostWnd: HWND);
  end;

implementation

{$R *.dfm}

class procedure TfrmPlugin.ShowFor(HostWnd: HWND);
var
  Form: TfrmPlugin;
begin
  Form := TfrmPlugin.Create(Application);
{$IFDEF DEBUG}
  Form.Caption := Form.Caption + ' (debug build)';
{$ENDIF}
  Form.Show;
  if HostWnd <> 0 then
    SetWindowPos(Form.Handle, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE or SWP_NOSIZE);
end;

procedure TfrmPlugin.FormClose(Sender: TObject; var Action: TCloseAction);
begin
  Action := caFree;
end;

procedure TfrmPlugin.FormKeyPress(Sender: TObject; var Key: Char);
begin
  if Key = Char(VK_ESCAPE) then
  begin
    Key := #0;
    Close;
  end;
end;

procedure TfrmPlugin.btnCloseClick(Sender: TObject);
begin
  Close;
end;

end.
