#include "tools/monkey/Forms.h"

namespace tvx::monkey {

// Of the inputs of an IO module the first 48 are switches, 8 are axes, the rest are lamps.
const std::vector<Way>& Ways() {
  static const std::vector<Way> ways = {
      {"frmMain", "", ""},
      {"frmStatus", "frmMain", "butOK"},
      {"FrmMainConfigure", "frmMain", "CmdConfigure"},
      {"FrmMainConfigure", "frmStatus", "CmdConfig"},
      {"frmPorts", "frmStatus", "cmdShowPorts"},
      {"frmMessages", "frmStatus", "cmdMessages"},
      {"frmCockpit", "frmStatus", "cmdCockpit"},
      {"frmFollow", "frmCockpit", "cmdFollow"},
      {"frmHelp", "frmMain", "LabelWebPage"},
      {"frmGuide", "FrmMainConfigure", "cmdGuide"},
      {"frmAircraft", "FrmMainConfigure", "cmdAircraft"},
      {"SaveConfig", "FrmMainConfigure", "cmdSaveConfig"},
      {"frmAdapters", "FrmMainConfigure", "cmdAdapters"},
      {"frmInstrument", "FrmMainConfigure", "Configlist"},
      {"frmCalibrate", "FrmMainConfigure", "cmdPlates"},
      {"frmCalibrate", "frmInstrument", "CmdCalibrate1"},
      {"frmCalibrate", "frmConfigEC", "cmdCalibrate0"},
      {"frmTestGauges", "FrmMainConfigure", "cmdTestGauges"},
      {"frmFunctionEditor", "FrmMainConfigure", "cmdGetOffset"},
      {"frmListFunctions", "frmFunctionEditor", "cmdListFunctions"},
      {"frmTestFunction", "frmFunctionEditor", "cmdTestFunction"},
      {"frmTestXplaneInterface", "FrmMainConfigure", "cmdTestXplaneInterface"},
      {"frmStatusIOM", "FrmMainConfigure", "cmdGotoIOM"},
      {"frmStatusIOM", "frmStatus", "cmdShowIOM"},
      {"frmstatusIOM2", "FrmMainConfigure", "cmdGotoIOM2"},
      {"frmstatusIOM2", "frmStatus", "cmdShowIOM2"},
      {"ConfigIOM", "frmStatusIOM", "cmdConfigIOM"},
      {"ConfigIOM", "frmstatusIOM2", "cmdConfigIOM"},
      {"ConfigSwitch", "ConfigIOM", "cmdEdit", "ListInputs", 0, 47},
      {"ConfigAnalogue", "ConfigIOM", "cmdEdit", "ListInputs", 48, 55},
      {"ConfigLamp", "ConfigIOM", "cmdEdit", "ListInputs", 56, 87},
      {"frmStatusEC", "FrmMainConfigure", "cmdGotoEC"},
      {"frmStatusEC", "frmStatus", "cmdShowECStatus"},
      {"frmTestEC", "frmStatusEC", "cmdTestEC"},
      {"frmConfigEC", "frmStatusEC", "cmdConfigEC"},
      {"frmStatusFFB", "FrmMainConfigure", "cmdGotoFFB"},
      {"frmStatusFFB", "frmStatus", "cmdShowYokes"},
      {"frmConfigY1", "frmStatusFFB", "cmdConfigY1"},
      {"frmConfigY2", "frmStatusFFB", "cmdConfigY2"},
      {"running", "frmStatus", "cmdRun"},             // no form, but a state to get to
      {"MessageBox", "", ""},                         // by message boxes and questions
      {"InputBox", "SaveConfig", "cmdSetAsStartup"},  // asks for a text
      {"QFileDialog", "frmFunctionEditor", "cmdImportLists"},
      {"QFileDialog", "frmTestXplaneInterface", "cmdSaveLog"},
  };
  return ways;
}

const QStringList& FormNames() {
  static const QStringList names = [] {
    QStringList all;
    for (const Way& way : Ways()) {
      const QString name = QString::fromLatin1(way.form);
      if (name != "running" && !all.contains(name)) all << name;
    }
    return all;
  }();
  return names;
}

}  // namespace tvx::monkey
