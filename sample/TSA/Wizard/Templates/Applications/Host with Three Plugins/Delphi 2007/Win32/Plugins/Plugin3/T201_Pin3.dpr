{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - plug-in library
  ----------------------------------------------------------------------------
  Project:    #Plugin.ProjectName#  (plug-in #Plugin.Index# of #Plugin.Count#)
  Plug-in:    #Plugin.DeepName#, version #Plugin.Version#
  Author:     #Plugin.Author#
  Copyright:  #Plugin.Copyright#
  Created:    #Creation.Date# by Tessera Wizard #TSaW.Version# (Tessera #TSA.Version#)

  #Plugin.Description#
  ============================================================================ }
{$ENDIF}
library vrPlugin_ProjectName;

{$IFDEF ddTemplate}
  {$MESSAGE HINT 'This is the template itself: create a Project Set with the Tessera Wizard.'}
{$ENDIF}

uses
  SysUtils,
  Classes,
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  vrProjects_Prefix_Shared in '..\..\..\..\Common\vrProjects_Prefix_Shared.pas',
  PluginModule in 'PluginModule.pas' {dmPlugin: TDataModule};

{$E #Manager.PluginExtension#}
{$R *.res}

exports
  RegisterTessera;

begin
{$IFDEF ddUseTLG}
  {$IFDEF ddLogInitFinit}TslLog.Msg('Library vrPlugin_ProjectName loaded');{$ENDIF}
{$ENDIF}
end.
