{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - host application
  ----------------------------------------------------------------------------
  Project:    #Host.ProjectName#
  Version:    #Manager.Version#
  Author:     #Manager.Author#
  Copyright:  #Manager.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)
              for #Target#
  ============================================================================ }
{$ENDIF}
program vrHost_ProjectName;

{$IFDEF ddTemplate}
  {$MESSAGE HINT 'This is the template itself: create a Project Set with the Tessera Wizard.'}
{$ENDIF}

uses
  Forms,
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  vrProjects_Prefix_Shared in '..\..\..\Common\vrProjects_Prefix_Shared.pas',
  ManagerModule in 'ManagerModule.pas' {dmManager: TDataModule},
  MainForm in 'MainForm.pas' {frmMain};

{$R *.res}
{$R 'vrProjects_Prefix_Version.res' 'vrProjects_Prefix_Version.rc'}

begin
{$IFDEF ddUseTLG}
  TslLog.Enter('vrHost_ProjectName');
{$ENDIF}
  Application.Initialize;
  Application.Title := '#Product.Name#';
  Application.CreateForm(TdmManager, dmManager);
  Application.CreateForm(TfrmMain, frmMain);
  Application.Run;
{$IFDEF ddUseTLG}
  TslLog.Leave('vrHost_ProjectName');
{$ENDIF}
end.
