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
      '16D75EE3-EC082478-0DD540E8-C230815D-239563BB-B2757467-3FC73225-D' +
      'F333ABE-766D6338-86791370'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
