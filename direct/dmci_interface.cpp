// Direct diagnostic interfaces: creation and deletion requests, their answers and settings.
#include "cmddata/direct/dmci_interface.h"

#include "cmddata_internal/procs.h"

namespace {}  // namespace

// No version prefix: two bare words.
template <class P>
void CCmdSConfig::Fields(P& p) {
    p.U32("setting_id", settingId);
    p.U32("value", value);
}
CMDDATA_DEFINE_FIELDS(CCmdSConfig)

// Header(p) puts nothing on the wire for these commands; the status word is written here.
template <class P>
void CCmdDmciStatus::Fields(P& p) {
    Header(p);
    p.U32("status_word_3", status_[2]);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciStatus)

template <class P>
void CCmdDmciWord::Fields(P& p) {
    Header(p);
    p.U32("parameter", parameter);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciWord)

template <class P>
void CCmdDmciBusInterface::Fields(P& p) {
    Header(p);
    p.Array("options", options);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CCmdDmciBusInterface)

template <class P>
void CDmciCreateIsoDiagInterfaceSnd::Fields(P& p) {
    Header(p);
    p.String("name", name);
    p.List("settings", settings);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciCreateIsoDiagInterfaceSnd)

template <class P>
void CDmciCreateVpwDiagInterfaceSnd::Fields(P& p) {
    Header(p);
    p.String("name", name);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciCreateVpwDiagInterfaceSnd)

template <class P>
void CDmciCreatePwmDiagInterfaceSnd::Fields(P& p) {
    Header(p);
    p.String("name", name);
    p.Buffer("setup_bytes", setupBytes);
    p.List("settings", settings);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciCreatePwmDiagInterfaceSnd)

template <class P>
void CDmciCreateDLC12InterfaceSnd::Fields(P& p) {
    Header(p);
    p.U8("option", option);
    p.U16("parameter", parameter);
}
CMDDATA_DEFINE_FIELDS(CDmciCreateDLC12InterfaceSnd)

template <class P>
void CDmciCreatePsaDiagInterfaceSnd::Fields(P& p) {
    Header(p);
    p.Array("options", options);
    p.Array("parameters", parameters);
}
CMDDATA_DEFINE_FIELDS(CDmciCreatePsaDiagInterfaceSnd)
