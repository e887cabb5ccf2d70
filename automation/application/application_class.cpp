#include "automation/application/application_class.h"

#include "automation/application/application.h"

namespace zentrel::objects {

template<>
const ClassTable* ClassOf<Application>() {
    using A = Application;
    using Text = std::string_view;
    static const ClassTable table(
        "Application",
        {
            Routine<&A::GetVersionID>("GetVersionID"),
            Routine<&A::CheckBit>("CheckBit"),
            Routine<&A::SetPDFrequency>("SetPDFrequency", {"sPLL", "dFreq"}),
            Routine<&A::GetPDFrequency>("GetPDFrequency", {"sPLL"}),
            Routine<&A::SetPrgmBits>("SetPrgmBits", {"sPrgmBits", "iValue"}),
            Routine<&A::GetPrgmBits>("GetPrgmBits", {"sPrgmBits"}),
            Routine<&A::SetPrgmBitValue>("SetPrgmBitValue", {"sPrgmBits", "iValue"}),
            Routine<&A::GetPrgmBitValue>("GetPrgmBitValue", {"sPrgmBits"}),
            Routine<&A::SetPrgmBitsText>("SetPrgmBitsText", {"sPrgmBits", "sValue"}),
            Routine<[](A& app, Text field) -> Value { return app.GetPrgmBitsText(field); }>(
                "GetPrgmBitsText", {"sPrgmBits"}),
            Routine<[](A& app, Text pin, bool value, std::optional<bool> update) {
                app.SetPrgmPins(pin, value, update.value_or(true));
            }>("SetPrgmPins", {"sPrgmPins", "bValue", "bUpdate"}),
            Routine<&A::GetPrgmPins>("GetPrgmPins", {"sPrgmPins"}),
            Routine<&A::SetNValue>("SetNValue", {"sPLL", "dNval"}),
            Routine<&A::SetVCOFrequency>("SetVCOFrequency", {"sPLL", "dFreq"}),
            Routine<&A::GetVCOFrequency>("GetVCOFrequency", {"sPLL"}),
            Routine<&A::SetOUT0Frequency>("SetOUT0Frequency", {"sPLL", "dFreq"}),
            Routine<&A::GetOUT0Frequency>("GetOUT0Frequency", {"sPLL"}),
            Routine<&A::SetOUT1Frequency>("SetOUT1Frequency", {"sPLL", "dFreq"}),
            Routine<&A::GetOUT1Frequency>("GetOUT1Frequency", {"sPLL"}),
            Routine<&A::SetOSCinFrequency>("SetOSCinFrequency", {"sPLL", "dFreq"}),
            Routine<&A::GetOSCinFrequency>("GetOSCinFrequency", {"sPLL"}),
            Routine<&A::SetExternalSourceFrequency>("SetExternalSourceFrequency",
                                                    {"sCLKDIST", "dFreq"}),
            Routine<&A::GetExternalSourceFrequency>("GetExternalSourceFrequency", {"sCLKDIST"}),
            Routine<&A::GetLinkedPLL>("GetLinkedPLL", {"sCLKDIST"}),
            Routine<&A::LoadPart>("LoadPart"),
            Routine<&A::LoadReg>("LoadReg", {"Index"}),
            Routine<&A::ReadQVX4100Register>("ReadQVX4100Register", {"sRegister"}),
            Routine<&A::ReadRegisterRaw>("ReadRegisterRaw", {"sRegister"}),
            Routine<&A::ReadPrgmBits>("ReadPrgmBits", {"sRegister"}),
            Routine<&A::Maximize>("Maximize"),
            Routine<&A::Minimize>("Minimize"),
            Child<[](A& app) { return RefTo(app.Part()); }>("Part", &ClassOf<cPart>),
            Routine<&A::RestoreSetup>("RestoreSetup", {"sName"}),
            Routine<&A::SaveSetup>("SaveSetup", {"sName"}),
            Routine<&A::RunBurstMode>("RunBurstMode"),
            Routine<&A::StopBurstMode>("StopBurstMode"),
            Routine<&A::AddBurst>("AddBurst", {"sRegName", "iCmd"}),
            Routine<&A::DeleteBurst>("DeleteBurst"),
            Routine<&A::RunBurstOnce>("RunBurstOnce"),
            Routine<&A::StartBurst>("StartBurst"),
            Routine<&A::StopBurst>("StopBurst"),
            Routine<&A::EnableBurst>("EnableBurst"),
            Routine<&A::SelectPart>("SelectPart", {"sName"}),
            Routine<&A::SelectTab>("SelectTab", {"sTab"}),
            Routine<&A::SetMode>("SetMode", {"Index"}),
            Routine<&A::ShowZentrel>("ShowZentrel"),
            Routine<&A::GetAutoReload>("GetAutoReload"),
            Routine<&A::SetAutoReload>("SetAutoReload", {"bValue"}),
            Routine<&A::GetSaveSettings>("GetSaveSettings"),
            Routine<&A::SetSaveSettings>("SetSaveSettings", {"bValue"}),
            Routine<&A::usbSetSPIDelay>("usbSetSPIDelay", {"timing"}),
            Routine<&A::SetCommMode>("SetCommMode", {"sValue"}),
            Routine<&A::SetModeText>("SetModeText", {"sValue"}),
            Routine<&A::CheckModeText>("CheckModeText", {"sValue"}),
            Routine<&A::CheckPLLName>("CheckPLLName", {"sValue"}),
        });
    return &table;
}

ObjectRef RefTo(Application& application) {
    return ObjectRef::Unowned(*ClassOf<Application>(), application);
}

} // namespace zentrel::objects
