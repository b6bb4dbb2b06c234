"""The Python package over the C interface: classes, JSON both ways, bytes, decoding, regions.

Run by ctest with CMDDATA_LIBRARY naming the library just built and the package on PYTHONPATH.
"""

import os
import struct

import pytest

import cmddata


def test_every_class_is_listed_and_made_empty():
    names = cmddata.classes()
    assert len(names) > 600 and len(set(names)) == len(names)
    for name in names:
        message = cmddata.Message(name)
        assert message.name == name
        assert cmddata.Message.from_json(name, message.to_json()).to_dict() == message.to_dict()


def test_json_fields_make_the_wire_bytes_and_decode_finds_them_again():
    answer = cmddata.Message.from_dict("CGetVINRcv", {"vin": "JT\u00e9", "status_word_1": 7})
    data = bytes(answer)
    assert data == struct.pack("<5I", 0x51, 7, 0, 0, 0) + bytes.fromhex("010000000800") + \
        "JT\u00e9\0".encode("utf-16-le")
    again = cmddata.decode(data)
    assert again.name == "CGetVINRcv"
    assert again.to_dict()["vin"] == "JT\u00e9"
    assert bytes(again) == data

    fresh = cmddata.Message("CGetVINRcv")
    assert fresh.read(data + b"\0\0") == len(data)
    assert fresh.to_dict() == answer.to_dict()


def test_errors_name_the_json_path_and_leave_the_message_as_it_was():
    message = cmddata.Message.from_dict("CGetDatMonListRcv", {"items": [{"item_id": 5}]})
    before = message.to_dict()
    with pytest.raises(cmddata.CmddataError) as error:
        message.load_json('{"items": [{}, {"item_id": 70000}]}')
    assert error.value.code == 0xC00C0002
    assert "items[1].item_id: 70000 does not fit u16" in str(error.value)
    assert message.to_dict() == before
    for bad in ('{"items": 1e999}', '[' * 200, '{"vin": "\\ud800"}', '{"nope": 1}'):
        with pytest.raises(cmddata.CmddataError):
            message.load_json(bad)
    with pytest.raises(cmddata.CmddataError):
        cmddata.Message("NoSuchClass")
    with pytest.raises(cmddata.CmddataError) as error:
        cmddata.Message("CGetVINRcv").read(b"\x51\0\0\0")
    assert error.value.code == 0x80080003
    with pytest.raises(cmddata.CmddataError):
        cmddata.decode(b"\xff" * 12)


def test_versions_choose_the_fields():
    newest = cmddata.Message("CCmdFunction")
    oldest = cmddata.Message("CCmdFunction", version=1)
    assert newest.version > oldest.version == 1
    assert len(newest.to_dict()) > len(oldest.to_dict())


def test_a_region_carries_a_message_between_two_views():
    name = "cmddata-py-%d" % os.getpid()
    with cmddata.Region.create(name, 4096) as mine, cmddata.Region.open(name) as theirs:
        sent = cmddata.Message.from_dict("CGetVINRcv", {"vin": "W0L"})
        assert mine.write(sent) == len(bytes(sent))
        received = cmddata.Message("CGetVINRcv")
        assert theirs.read(received) == len(bytes(sent))
        assert received.to_dict() == sent.to_dict()
    with pytest.raises(cmddata.CmddataError):
        cmddata.Region.open(name)
