// Uses the installed library from outside: writes a list into a region, checks the bytes and
// reads them back. Prints "consumer ok" and exits 0 when all of it holds.
#include <cmddata/cmddata.h>

#include <cstdio>
#include <cstring>

int main() {
    CCmdList<CCmdWordId> ids;
    ids.GetAt(ids.AddTail()) = 0x1234;
    ids.GetAt(ids.AddTail()) = 0xabcd;

    unsigned char region[64];
    std::memset(region, 0xee, sizeof region);
    CCmdWriter writer;
    writer.AttachView(region, sizeof region);
    writer.Write(&ids);
    const unsigned char expected[] = {0x01, 0x00, 0x00, 0x00, 0x02, 0x00,
                                      0x00, 0x00, 0x34, 0x12, 0xcd, 0xab};
    if (writer.GetLastError() != 0 || writer.GetPosition() != sizeof expected ||
        std::memcmp(region, expected, sizeof expected) != 0) {
        std::printf("consumer: unexpected bytes written\n");
        return 1;
    }

    CCmdList<CCmdWordId> back;
    CCmdReader reader;
    reader.AttachView(region, writer.GetPosition());
    reader.Read(&back);
    if (reader.GetLastError() != 0 || back.GetCount() != 2 || back.GetAt(1) != 0xabcd) {
        std::printf("consumer: read back differs\n");
        return 1;
    }
    if (cmddata::WireSize(ids) != sizeof expected) {
        std::printf("consumer: measured size differs\n");
        return 1;
    }
    std::printf("consumer ok\n");
    return 0;
}
