object dmManager: TdmManager
  OldCreateOrder = False
  OnCreate = DataModuleCreate
  OnDestroy = DataModuleDestroy
  Left = 200
  Top = 120
  Height = 150
  Width = 215
  object tsaManager: TqrxTsaMan
    Version = '#Manager.Version#'
    DeepName = '#Manager.DeepName#'
    Author = '#Manager.Author#'
    Copyright = '#Manager.Copyright#'
    PluginExtension = '#Manager.PluginExtension#'
    PluginFolder = '#Manager.PluginFolder#'
    ServiceFolder = '#Manager.ServiceFolder#'
    DCI.UniqueID = 
      '060EBCCE-FA3B3305-7F85231E-9B1E44BA-9D78FD1B-5B68C66E-E94AF6B2-C' +
      '7C31B98-9696BF6C-B12DFFA2'
    Left = 48
    Top = 24
  end
end
