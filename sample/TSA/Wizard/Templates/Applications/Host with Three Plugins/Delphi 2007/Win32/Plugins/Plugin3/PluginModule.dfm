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
      '477E36A5-1DA607BC-75C93401-15B0078F-C0580B10-0DFC6259-AB7A2D8A-4' +
      '288744F-DA845AEA-1DF4CDA1'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
