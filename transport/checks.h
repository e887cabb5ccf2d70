#pragma once

/// The entries of the menu "LPT/USB" that answer with a box.
namespace zentrel {

class cPart;

/// "Check LPT": opens the port driver anew and says whether that worked, with the driver's own
/// reason below when it knows one.
void CheckLPT(cPart& part);
/// "USB Version": shows the bridge's answer, which begins with the opcode, a line feed.
void USBVersion(cPart& part);
/// "Adjust USB timing": asks for the bridge's timing constant, 0 to 255, and sends it.
void AdjustTiming(cPart& part);

} // namespace zentrel
