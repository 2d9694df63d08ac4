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
      '26EFD0C7-7AE97357-465F299F-83A99E4F-1FE6D525-52B672E7-BD811678-A' +
      'DF596EE-FC4D0A0E-ACCB5020'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
