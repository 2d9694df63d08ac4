{$IFDEF ddCommentedHeaders}
{ ============================================================================
  #Product.Name# - service plug-in library
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

{ Install the library in the host's service folder: #Manager.ServiceFolder# }

uses
  SysUtils,
  Classes,
{$IFDEF ddUseTLG}
  TesseraLogger,
{$ENDIF}
  ServiceModule in 'ServiceModule.pas' {dmService: TDataModule};

{$E #Manager.PluginExtension#}
{$R *.res}

exports
  RegisterTessera;

begin
end.
