#include "creation/creation_run_test_support.h"

#include <fstream>
#include <sstream>

#include "model/expand.h"
#include "model/variables.h"
#include "templates/catalogue.h"

namespace tsaw::creation::testing_support {
namespace fs = std::filesystem;

DemoSetup::DemoSetup() {
  wizard.WizardFolder = (dir.path() / "TSA/Wizard").string() + "/";
  wizard.TemplatesFolder = wizard.WizardFolder + "Templates/";
  wizard.JobsFolder = wizard.WizardFolder + "Jobs/";
  dir.MakeDir("home");
  const std::string t = "TSA/Wizard/Templates/Demo/";
  dir.Write(t + "Template.ini",
            "[Template]\nName=Demo\nPrefix=T101\nAuthor=Tester\nPurpose=Tests\nDesc=Demo\nPluginCount=2\n"
            "[Default Values]\nProduct.Name=Rocket\nCompany.Name=O'Neil & Co\nProjects.Prefix=Acme\n"
            "Output.BaseFolder=" + Out().string() + "\nLogging.UseTLG=yes\nLogging.LogComments=no\n");
  dir.Write(t + "ReadMe.txt", "#Product.Name# by vrCompany_Name\n");
  dir.Write(t + "Unit.dcu", "compiled");
  dir.Write(t + "TplHelper/Note.txt", "helper");
  dir.Write(t + "Common/T101_Shared.pas",
            "unit vrProjects_Prefix_Shared;\n{$IFDEF ddUseTLG}uses Logger;{$ENDIF}\n"
            "{$IFDEF ddLogComments}// comments{$ENDIF}\nend.\n");
  dir.Write(t + "Delphi 5/Win32/Host/T101_Host.dpr", "program Old;\n");
  dir.Write(t + "Delphi 7/Lang.txt", "lang vrTarget_Language\n");
  dir.Write(t + "Delphi 7/Win32/T101_Group.bpg", "#Project.Group#: vrHost_ProjectName.exe\n");
  dir.Write(t + "Delphi 7/Win32/Host/T101_Host.dpr",
            "program vrHost_ProjectName;\n{$IFDEF ddTarget_D7W32}// D7{$ENDIF}\n"
            "{$IFDEF ddPluginIndex_1}// one{$ENDIF}\n{$R *.res}\nbegin\nend.\n");
  dir.Write(t + "Delphi 7/Win32/Host/T101_Host.cfg", "-$A8\n-dDEBUG;ddTemplate;ddUseTLG\n");
  dir.Write(t + "Delphi 7/Win32/Host/Main.dfm",
            "object Main: TForm\n  Caption = '#Company.Name#'\n  object tsaMan: TqrxTsaMan\n"
            "    Version = '1.0'\n    DCI.UniqueID = \n      'OLD'\n  end\nend\n");
  dir.Write(t + "Delphi 7/Win32/Host/logo.bin", std::string("\x00\x01\xFF" "bin", 6));
  dir.Write(t + "Delphi 7/Win32/Plugins/Plugin2/T101_Pin.dpr",
            "library vrPlugin_ProjectName;\n{$IFDEF ddPluginIndex_2}// two{$ENDIF}\n"
            "{$IFDEF ddPluginIndex_1}// one{$ENDIF}\nend.\n");
  dir.Write(t + "Delphi 7/Win32/Plugins/Plugin2/Latin.txt", "caf\xE9 #Product.Name#\n");

  Init_Variables(wizard);
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  catalogue.Select(catalogue.Find_Node(wizard.TemplatesFolder + "Demo"));
  SetVariable(viTsaVersion, "2.2.05");
  SetVariable(viTsawDeepName, "Tessera Wizard");
  SetVariable(viTsawVersion, "6.01");
  SetVariable(viCreationDate, "2024-01-02");
  SetVariable(viCreationTime, "03:04:05");
  SetVariable(viProjectGroup, "vrProjects_Prefix_vrTarget");
  for (uint16_t target = 1; target < wizard.Targets.size(); ++target) wizard.Targets[target].Checked = target == 3;
}

void DemoSetup::SetVariable(uint16_t var_idx, const std::string& value) {
  TVariableItem& item = wizard.Variables[var_idx];
  item.Value = item.DefaultValue = value;
  item.IdfValue = Str2Idf(value);
}

std::map<std::string, std::string> DemoSetup::Tree(const fs::path& folder) {
  std::map<std::string, std::string> tree;
  if (!fs::exists(folder)) return tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string relative = entry.path().lexically_relative(folder).generic_string();
    if (entry.is_directory()) {
      tree[relative + "/"] = "";
      continue;
    }
    std::ifstream in(entry.path(), std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    tree[relative] = bytes.str();
  }
  return tree;
}

}  // namespace tsaw::creation::testing_support
