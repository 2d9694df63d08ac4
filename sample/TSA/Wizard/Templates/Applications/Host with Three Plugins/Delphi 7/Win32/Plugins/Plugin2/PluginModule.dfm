object dmPlugin: TdmPlugin
  OldCreateOrder = False
  OnCreate = DataModuleCreate
  OnDestroy = DataModuleDestroy
  Left = 240
  Top = 160
  Height = 150
  Width = 215
  object tsaPlugin: TtsaPlugin
    Version = '#Plugin.Version#'
    DeepName = '#Plugin.DeepName#'
    Author = '#Plugin.Author#'
    Copyright = '#Plugin.Copyright#'
    DCI.UniqueID = 
      '63587F00-851F9C11-DE90340E-87A48565-367BA04E-B98728FF-F5EB058C-1' +
      '327AFCA-41D34C75-25658ACF'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
