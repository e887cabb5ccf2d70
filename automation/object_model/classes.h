#pragma once

#include <memory>

#include "automation/object_model/collection.h"

/// The classes of the device as outsiders see them, each defined in the file of its subject.
namespace zentrel {

class cBurst;
class cClkDist;
class cPart;
class cPLL;
class cPrgmBits;
class cPrgmPin;
class cRegister;
class FrmPart;

namespace objects {

template<>
const ClassTable* ClassOf<cPart>();
template<>
const ClassTable* ClassOf<cRegister>();
template<>
const ClassTable* ClassOf<cPrgmBits>();
template<>
const ClassTable* ClassOf<cPrgmPin>();
template<>
const ClassTable* ClassOf<cPLL>();
template<>
const ClassTable* ClassOf<cClkDist>();
template<>
const ClassTable* ClassOf<cBurst>();
template<>
const ClassTable* ClassOf<FrmPart>();

/// `Part` and `frmPart`: the two roots that outsiders start from.
ObjectRef RefTo(cPart& part);
ObjectRef RefTo(FrmPart& form);

/// `Part` and `Parent` of the device's own objects: the device.
template<typename T>
Member PartMember(std::string_view name) {
    return Child<[](T& object) { return RefTo(object.Part()); }>(name, &ClassOf<cPart>);
}

} // namespace objects
} // namespace zentrel
