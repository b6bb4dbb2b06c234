// Direct diagnostic interfaces: create and delete an interface of a given bus and protocol kind.
//
// These commands keep their header in memory but put none of it on the wire: a request carries
// its own fields alone (a request without fields writes nothing), an answer carries status
// word 3, then its own fields. Whoever reads them knows the command by other means.
#pragma once

#include <cstdint>

#include "cmddata/command/layouts.h"
#include "cmddata/core/buffer.h"
#include "cmddata/core/list.h"

/// One configuration setting of an interface: setting identifier and value, 8 bytes with no
/// version prefix.
class CMDDATA_API CCmdSConfig : public CCmdCore {
public:
    CMDDATA_FIELDS(CCmdSConfig)
    CCmdSConfig() = default;
    std::uint32_t settingId = 0;
    std::uint32_t value = 0;
};

/// Base of the headerless layouts: built without a header on the wire, as the commands that
/// carry them are.
class CMDDATA_API CCmdDmciLayout : public CCmdBase {
protected:
    CCmdDmciLayout(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdBase(commandId, version, reserved) {
        framing_ = cmddata::Framing::kNone;
    }
};

/// An answer that carries status word 3 alone (4 bytes).
class CMDDATA_API CCmdDmciStatus : public CCmdDmciLayout {
public:
    CMDDATA_FIELDS(CCmdDmciStatus)
    CCmdDmciStatus(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdDmciLayout(commandId, version, reserved) {}
};

/// A request that carries one 32-bit parameter.
class CMDDATA_API CCmdDmciWord : public CCmdDmciLayout {
public:
    CMDDATA_FIELDS(CCmdDmciWord)
    CCmdDmciWord(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdDmciLayout(commandId, version, reserved) {}
    std::uint32_t parameter = 0;
};

/// The CAN-type creation request, shared by the phase-5 interface: two byte options, then seven
/// 32-bit parameters (30 bytes).
class CMDDATA_API CCmdDmciBusInterface : public CCmdDmciLayout {
public:
    CMDDATA_FIELDS(CCmdDmciBusInterface)
    CCmdDmciBusInterface(std::uint32_t commandId, std::uint16_t version, std::uint16_t reserved)
        : CCmdDmciLayout(commandId, version, reserved) {}
    std::uint8_t options[2] = {0, 0};
    std::uint32_t parameters[7] = {0, 0, 0, 0, 0, 0, 0};
};

/// Creates an ISO-type interface: its name, its settings and four parameters.
class CMDDATA_API CDmciCreateIsoDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreateIsoDiagInterface> {
public:
    CMDDATA_MESSAGE(CDmciCreateIsoDiagInterfaceSnd)
    CCmdString name;
    CCmdList<CCmdSConfig> settings;
    std::uint32_t parameters[4] = {0, 0, 0, 0};
};

/// Outcome of creating an ISO-type interface (status word 3).
class CMDDATA_API CDmciCreateIsoDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreateIsoDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateIsoDiagInterfaceRcv)
};

/// Creates a CAN-type interface: two byte options and seven parameters.
class CMDDATA_API CDmciCreateCanDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreateCanDiagInterface, CCmdDmciBusInterface> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateCanDiagInterfaceSnd)
};

/// Outcome of creating a CAN-type interface (status word 3).
class CMDDATA_API CDmciCreateCanDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreateCanDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateCanDiagInterfaceRcv)
};

/// Creates a VPW-type interface: its name and two parameters.
class CMDDATA_API CDmciCreateVpwDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreateVpwDiagInterface> {
public:
    CMDDATA_MESSAGE(CDmciCreateVpwDiagInterfaceSnd)
    CCmdString name;
    std::uint32_t parameters[2] = {0, 0};
};

/// Outcome of creating a VPW-type interface (status word 3).
class CMDDATA_API CDmciCreateVpwDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreateVpwDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateVpwDiagInterfaceRcv)
};

/// Creates a PWM-type interface: its name, raw set-up bytes, its settings and two parameters.
class CMDDATA_API CDmciCreatePwmDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreatePwmDiagInterface> {
public:
    CMDDATA_MESSAGE(CDmciCreatePwmDiagInterfaceSnd)
    CCmdString name;
    CCmdBuffer setupBytes;
    CCmdList<CCmdSConfig> settings;
    std::uint32_t parameters[2] = {0, 0};
};

/// Outcome of creating a PWM-type interface (status word 3).
class CMDDATA_API CDmciCreatePwmDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreatePwmDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreatePwmDiagInterfaceRcv)
};

/// Deletes the diagnostic interface (nothing on the wire).
class CMDDATA_API CDmciDeleteDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciDeleteDiagInterface, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDiagInterfaceSnd)
};

/// Outcome of deleting the diagnostic interface (status word 3).
class CMDDATA_API CDmciDeleteDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciDeleteDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDiagInterfaceRcv)
};

/// Creates the DLC12 interface: one byte option and one 16-bit parameter (3 bytes).
class CMDDATA_API CDmciCreateDLC12InterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreateDLC12Interface> {
public:
    CMDDATA_MESSAGE(CDmciCreateDLC12InterfaceSnd)
    std::uint8_t option = 0;
    std::uint16_t parameter = 0;
};

/// Outcome of creating the DLC12 interface (status word 3).
class CMDDATA_API CDmciCreateDLC12InterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreateDLC12Interface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateDLC12InterfaceRcv)
};

/// Deletes the DLC12 interface (nothing on the wire).
class CMDDATA_API CDmciDeleteDLC12InterfaceSnd
    : public CCmdSnd<cmddata::command::DmciDeleteDLC12Interface, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDLC12InterfaceSnd)
};

/// Outcome of deleting the DLC12 interface (status word 3).
class CMDDATA_API CDmciDeleteDLC12InterfaceRcv
    : public CCmdRcv<cmddata::command::DmciDeleteDLC12Interface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDLC12InterfaceRcv)
};

/// Creates the data-monitor interface: one parameter.
class CMDDATA_API CDmciCreateDmInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreateDmInterface, CCmdDmciWord> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateDmInterfaceSnd)
};

/// Outcome of creating the data-monitor interface (status word 3).
class CMDDATA_API CDmciCreateDmInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreateDmInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreateDmInterfaceRcv)
};

/// Deletes the data-monitor interface (nothing on the wire).
class CMDDATA_API CDmciDeleteDmInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciDeleteDmInterface, CCmdHeaderOnly> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDmInterfaceSnd)
};

/// Outcome of deleting the data-monitor interface (status word 3).
class CMDDATA_API CDmciDeleteDmInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciDeleteDmInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciDeleteDmInterfaceRcv)
};

/// Creates a PSA-type interface: four byte options, then five parameters (24 bytes).
class CMDDATA_API CDmciCreatePsaDiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreatePsaDiagInterface> {
public:
    CMDDATA_MESSAGE(CDmciCreatePsaDiagInterfaceSnd)
    std::uint8_t options[4] = {0, 0, 0, 0};
    std::uint32_t parameters[5] = {0, 0, 0, 0, 0};
};

/// Outcome of creating a PSA-type interface (status word 3).
class CMDDATA_API CDmciCreatePsaDiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreatePsaDiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreatePsaDiagInterfaceRcv)
};

/// Creates a phase-5 interface: the layout of the CAN-type request.
class CMDDATA_API CDmciCreatePhase5DiagInterfaceSnd
    : public CCmdSnd<cmddata::command::DmciCreatePhase5DiagInterface, CCmdDmciBusInterface> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreatePhase5DiagInterfaceSnd)
};

/// Outcome of creating a phase-5 interface (status word 3).
class CMDDATA_API CDmciCreatePhase5DiagInterfaceRcv
    : public CCmdRcv<cmddata::command::DmciCreatePhase5DiagInterface, CCmdDmciStatus> {
public:
    CMDDATA_MESSAGE_LAYOUT(CDmciCreatePhase5DiagInterfaceRcv)
};
