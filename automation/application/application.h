#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "session/frm_part.h"

namespace zentrel {

class WindowFrame;

/// The program as other programs drive it, by name instead of by hand. It holds no state: each
/// operation goes straight to the one device, the one window and their routines. The order is the
/// clients' contract.
///
/// Names of PLLs, clock blocks, fields and pins are keys. One that the device doesn't hold throws
/// NotFound, and nothing changes; the operations that walk a collection compare exactly and answer
/// in their own way. A refresh is all displays and then, with "AutoReload with Changes" checked,
/// the load of what changed. Frequencies are in MHz, the comparison frequency in kHz.
class Application {
  public:
    Application(FrmPart& frm, WindowFrame& frame) : frm_(frm), part_(frm.part), frame_(frame) {}

    std::string GetVersionID() const;
    /// Shows "hi"; false.
    bool CheckBit();

    void SetPDFrequency(std::string_view sPLL, double dFreq);
    std::string GetPDFrequency(std::string_view sPLL) const;
    /// The raw bits of a field.
    void SetPrgmBits(std::string_view sPrgmBits, double iValue);
    std::int32_t GetPrgmBits(std::string_view sPrgmBits) const;
    /// The number that a field means, halves rounded up.
    void SetPrgmBitValue(std::string_view sPrgmBits, double iValue);
    std::int32_t GetPrgmBitValue(std::string_view sPrgmBits) const;
    void SetPrgmBitsText(std::string_view sPrgmBits, std::string_view sValue);
    std::string GetPrgmBitsText(std::string_view sPrgmBits) const;
    /// Without `bUpdate` the pin's state is stored and nothing else.
    void SetPrgmPins(std::string_view sPrgmPins, bool bValue, bool bUpdate = true);
    bool GetPrgmPins(std::string_view sPrgmPins) const;

    /// As if typed into the N box of a PLL, or of the PLL behind a clock block. Nothing when there
    /// is none.
    void SetNValue(std::string_view sPLL, double dNval);
    /// Nothing when there is no such PLL.
    void SetVCOFrequency(std::string_view sPLL, double dFreq);
    double GetVCOFrequency(std::string_view sPLL) const;
    void SetOUT0Frequency(std::string_view sPLL, double dFreq);
    double GetOUT0Frequency(std::string_view sPLL) const;
    void SetOUT1Frequency(std::string_view sPLL, double dFreq);
    double GetOUT1Frequency(std::string_view sPLL) const;
    /// Nothing when no PLL's panel bears that name.
    void SetOSCinFrequency(std::string_view sPLL, double dFreq);
    double GetOSCinFrequency(std::string_view sPLL) const;

    /// Refreshes the displays, block or no block. Never loads.
    void SetExternalSourceFrequency(std::string_view sCLKDIST, double dFreq);
    /// -1 when there is no such block.
    double GetExternalSourceFrequency(std::string_view sCLKDIST) const;
    /// "-1" when there is no such block.
    std::string GetLinkedPLL(std::string_view sCLKDIST) const;

    /// Sends all registers.
    void LoadPart();
    /// Sends register `Index`, counted from 0; nothing when there is none.
    void LoadReg(std::int16_t Index);
    /// Read back from the device; mirrored over the data bits, raw, or one field of a register.
    double ReadQVX4100Register(std::string_view sRegister);
    double ReadRegisterRaw(std::string_view sRegister);
    double ReadPrgmBits(std::string_view sRegister);

    void Maximize();
    void Minimize();
    /// The device itself, with everything public.
    cPart& Part() const { return part_; }

    /// A name without a separator lies in the program's folder; it comes back as the path there.
    /// Throw what restoring and saving throw.
    void RestoreSetup(std::string& sName);
    void SaveSetup(std::string& sName);

    void RunBurstMode();
    void StopBurstMode();
    /// Does nothing while a burst runs, like DeleteBurst.
    void AddBurst(std::string_view sRegName, std::int16_t iCmd);
    void DeleteBurst();
    void RunBurstOnce();
    /// Returns when the run has ended; at once when one is under way.
    void StartBurst();
    void StopBurst();
    /// Starts a run behind the call's back.
    void EnableBurst();

    /// Makes that part the device, unless it is already.
    void SelectPart(std::string_view sName);
    /// Selects each tab in turn and ends on the last one with that caption, or on the first tab.
    void SelectTab(std::string_view sTab);
    void SetMode(std::int16_t Index);
    void ShowZentrel();

    bool GetAutoReload() const;
    void SetAutoReload(bool bValue);
    bool GetSaveSettings() const;
    void SetSaveSettings(bool bValue);

    /// The bridge's timing constant: cut to 0 to 255, in the argument too.
    void usbSetSPIDelay(std::int16_t& timing);
    /// "USB" or "LPT", letters in any case; any other text does nothing.
    void SetCommMode(std::string_view sValue);
    /// A mode by its name, letters in any case; nothing when there is none.
    void SetModeText(std::string_view sValue);
    bool CheckModeText(std::string_view sValue) const;
    bool CheckPLLName(std::string_view sValue) const;

  private:
    void Refresh();
    template<typename Change>
    void Apply(Change change);
    cPLL* PllNamed(std::string_view id) const;
    cClkDist* BlockNamed(std::string_view id) const;

    FrmPart& frm_;
    cPart& part_;
    WindowFrame& frame_;
};

} // namespace zentrel
