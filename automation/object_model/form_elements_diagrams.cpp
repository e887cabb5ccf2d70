#include <array>

#include "automation/object_model/element_rows.h"
#include "automation/object_model/form_parts.h"

namespace zentrel::objects {

std::span<const ElementRow> PllElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        OfEach<&PllPanel::txtOsc>("txtOsc"),
        OfEach<&PllPanel::txtFpd>("txtFpd"),
        OfEach<&PllPanel::SpnFpd>("SpnFpd"),
        OfEach<&PllPanel::txtVCO>("txtVCO"),
        OfEach<&PllPanel::txtRCounter>("txtRCounter"),
        OfEach<&PllPanel::spnRCounter>("spnRCounter"),
        OfEach<&PllPanel::txtNCounter>("txtNCounter"),
        OfEach<&PllPanel::spnNCounter>("spnNCounter"),
        OfEach<&PllPanel::txtFractNum>("txtFractNum"),
        OfEach<&PllPanel::txtFractDen>("txtFractDen"),
        OfEach<&PllPanel::SpnFractNum>("SpnFractNum"),
        OfEach<&PllPanel::spnFractDen>("spnFractDen"),
        OfEach<&PllPanel::txtOUT0_DIV>("txtOUT0_DIV"),
        OfEach<&PllPanel::txtOUT1_DIV>("txtOUT1_DIV"),
        OfEach<&PllPanel::SpnOUT0_DIV>("SpnOUT0_DIV"),
        OfEach<&PllPanel::SpnOUT1_DIV>("SpnOUT1_DIV"),
        OfEach<&PllPanel::txtOUT0>("txtOUT0"),
        OfEach<&PllPanel::txtOUT1>("txtOUT1"),
        OfEach<&PllPanel::lblDoubler>("lblDoubler"),
        OfEach<&PllPanel::lblNPrescale>("lblNPrescale"),
        OfEach<&PllPanel::lblPDPol>("lblPDPol"),
        OfEach<&PllPanel::lblCPGain>("lblCPGain"),
        OfEach<&PllPanel::lblCPState>("lblCPState"),
        OfEach<&PllPanel::txtGetPLLBits>("txtGetPLLBits"),
        OfEach<&PllPanel::lblPLLOSCBit>("lblPLLOSCBit"),
        OfEach<&PllPanel::lblPLLOSCinPin>("lblPLLOSCinPin"),
        OfEach<&PllPanel::lblPLLFinPin>("lblPLLFinPin"),
        OfEach<&PllPanel::lblPLLFoutPin>("lblPLLFoutPin"),
        OfEach<&PllPanel::lblPLLCPoutPin>("lblPLLCPoutPin"),
        OfEach<&PllPanel::lblPLLOut0Pin>("lblPLLOut0Pin"),
        OfEach<&PllPanel::lblPLLOut1Pin>("lblPLLOut1Pin"),
        OfEach<&PllPanel::shpPLLintVCO>("shpPLLintVCO"),
        OfEach<&PllPanel::shpPLLintOutputs>("shpPLLintOutputs"),
        OfEach<&PllPanel::pllSynthDiv>("pllSynthDiv"),
        OfEach<&PllPanel::pllSynthDivLblHigh>("pllSynthDivLblHigh"),
        OfEach<&PllPanel::pllSynthDivLblLow>("pllSynthDivLblLow"),
        OfEach<&PllPanel::pllExtraDiv>("pllExtraDiv"),
        OfEach<&PllPanel::pllExtraDivLbl>("pllExtraDivLbl"),
        OfEach<&PllPanel::pllExtraDivVal>("pllExtraDivVal"),
        OfEach<&PllPanel::pllManualDivide>("pllManualDivide"),
        OfEach<&PllPanel::lblOSC_Range>("lblOSC_Range"),
        OfEach<&PllPanel::lblVCO_Range>("lblVCO_Range"),
        OfEach<&PllPanel::lblFpd_Range>("lblFpd_Range"),
        OfEach<&PllPanel::lblNCheck1>("lblNCheck1"),
        OfEach<&PllPanel::lblNCheck2>("lblNCheck2"),
        FamilyOfEach<&PllPanel::linpll>("linpll"),
        FamilyOfEach<&PllPanel::shpPLL>("shpPLL"),
        FamilyOfEach<&PllPanel::lblPLL>("lblPLL"),
    });
    return kRows;
}

std::span<const ElementRow> ClockElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        OfEach<&ClockPanel::cbClkInputMux>("cbClkInputMux"),
        OfEach<&ClockPanel::txtCLK_RefOSCfreq>("txtCLK_RefOSCfreq"),
        OfEach<&ClockPanel::txtCLK_ExtSRCfreq>("txtCLK_ExtSRCfreq"),
        OfEach<&ClockPanel::txtCLK_VCOfreq>("txtCLK_VCOfreq"),
        OfEach<&ClockPanel::CB_CLK_Delay_N>("CB_CLK_Delay_N"),
        OfEach<&ClockPanel::CB_CLK_Delay_R>("CB_CLK_Delay_R"),
        OfEach<&ClockPanel::CLKtxt_InputDiv>("CLKtxt_InputDiv"),
        OfEach<&ClockPanel::CLKspn_InputDiv>("CLKspn_InputDiv"),
        OfEach<&ClockPanel::CLK_VCODIV_bypass>("CLK_VCODIV_bypass"),
        OfEach<&ClockPanel::CLKtxt_InputDivOutFreq>("CLKtxt_InputDivOutFreq"),
        OfEach<&ClockPanel::clkDist_R_value>("clkDist_R_value"),
        OfEach<&ClockPanel::clkDist_N_value>("clkDist_N_value"),
        OfEach<&ClockPanel::clkDist_PDF_value>("clkDist_PDF_value"),
        OfEach<&ClockPanel::clkdist_R3>("clkdist_R3"),
        OfEach<&ClockPanel::clkdist_R4>("clkdist_R4"),
        OfEach<&ClockPanel::clkdist_C3>("clkdist_C3"),
        OfEach<&ClockPanel::clkdist_C4>("clkdist_C4"),
        OfEachChannel<&ClockChannelRow::chDivText>("chDivText"),
        OfEachChannel<&ClockChannelRow::chDivSpnFpd>("chDivSpnFpd"),
        OfEachChannel<&ClockChannelRow::divCB_CDelay>("divCB_CDelay"),
        OfEachChannel<&ClockChannelRow::divCB_CMux>("divCB_CMux"),
        OfEachChannel<&ClockChannelRow::divCB_od>("divCB_od"),
        OfEachChannel<&ClockChannelRow::divCHtxt_freq>("divCHtxt_freq"),
        OfEachChannel<&ClockChannelRow::lblCLKid>("lblCLKid"),
        FamilyOfEach<&ClockPanel::lblCLK>("lblCLK"),
        FamilyOfEach<&ClockPanel::shpCLK>("shpCLK"),
        FamilyOfEach<&ClockPanel::LineCLK>("LineCLK"),
    });
    return kRows;
}

} // namespace zentrel::objects
