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
      '2059683E-D3632A11-1ADB2167-F07EF5A7-6694072D-C0236335-B5B49F87-C' +
      '483C6AC-C95D5102-055277A3'
    Left = 48
    Top = 24
  end
end
