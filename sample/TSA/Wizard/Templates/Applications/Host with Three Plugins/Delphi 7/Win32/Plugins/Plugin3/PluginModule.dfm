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
      'A939DB57-8746C92D-563E9495-FBB95C73-96093C39-67EB32AE-A56D5D1F-6' +
      '56D23AA-2FBF79C6-36692C25'
    OnCommand = tsaPluginCommand
    Left = 48
    Top = 24
  end
end
