unit MainUnit;

{ Main form of the host application, as a template author writes it: the
  blocks on "dd" names are resolved by the wizard, all others are left for
  the compiler. }

interface

uses
  Windows, SysUtils, Classes, Forms, Controls, StdCtrls,
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  qrxTsa;

type
  TfrmMain = class(TForm)
    btnStart: TButton;
    labStatus: TLabel;
    procedure btnStart_OnClick(Sender: TObject);
  private
{$IFDEF ddUseTLG}
    FLog: TTesseraLogger;
{$ENDIF}
    procedure Log(const Msg: string);
  end;

var
  frmMain: TfrmMain;

implementation

{$R *.dfm}
{$R *.res}

procedure TfrmMain.Log(const Msg: string);
begin
{$IFDEF ddUseTLG}
  FLog.Write('MainUnit.TfrmMain.' + Msg);
{$ELSE}
  // Logging is off in this Project Set.
{$ENDIF}
{$IFNDEF ddLogComments}
  // Step comments are off: the log shows routine names only.
{$ENDIF}
end;

procedure TfrmMain.btnStart_OnClick(Sender: TObject);
begin
  Log('btnStart_OnClick entered');{$IFDEF ddLogComments} // step 10{$ENDIF}
{$IFDEF DEBUG}
  {$IFDEF ddUseTLG}
  FLog.Write('DEBUG build');
  {$ENDIF}
  Assert(Assigned(Sender));
{$ENDIF}
  labStatus.Caption := 'Started';
  Log('btnStart_OnClick left');
end;

end.
