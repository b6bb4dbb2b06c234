/* The C interface, used from C alone: classes by name, bytes, JSON both ways, decoding and a
 * named region. Prints one line per failed check and "N passed, N failed" at the end. */
#include <stdio.h>
#include <string.h>
#include <time.h>

#include "cmddata/cmddata_c.h"

static int passed, failed;

#define CHECK(cond)                                                 \
    do {                                                            \
        if (cond) {                                                 \
            ++passed;                                               \
        } else {                                                    \
            ++failed;                                               \
            printf("%s:%d: failed: %s\n", __FILE__, __LINE__, #cond); \
        }                                                           \
    } while (0)

static const char* hex(const unsigned char* p, size_t n) {
    static char text[512];
    size_t i;
    for (i = 0; i < n && i < 255; ++i) sprintf(text + 2 * i, "%02x", p[i]);
    text[2 * i] = '\0';
    return text;
}

static void classes(void) {
    size_t count = cmddata_class_count(), i, messages = 0;
    CHECK(count > 600);
    CHECK(cmddata_class_name(count) == NULL);
    for (i = 0; i < count; ++i) {
        const char* name = cmddata_class_name(i);
        size_t length = strlen(name);
        if (length > 3 && (strcmp(name + length - 3, "Snd") == 0 || strcmp(name + length - 3, "Rcv") == 0))
            ++messages;
    }
    CHECK(messages >= 472); /* both sides of every command of the catalogue */
    CHECK(cmddata_new("NoSuchClass", -1) == NULL);
    CHECK(cmddata_new(NULL, -1) == NULL);
    CHECK(cmddata_new("CGetVINRcv", 70000) == NULL);
}

static void bytes_and_json(void) {
    cmddata_message* m = cmddata_new("CGetVINRcv", -1);
    unsigned char bytes[64];
    char json[256], error[64];
    size_t n = 0, needed = 0;
    CHECK(m != NULL);
    CHECK(strcmp(cmddata_message_class(m), "CGetVINRcv") == 0);
    CHECK(cmddata_message_version(m) == 1);
    CHECK(cmddata_from_json(m, "{\"vin\":\"JT\",\"status_word_1\":7}", error, sizeof error) ==
          CMDDATA_OK);
    /* Measured first, then written. */
    CHECK(cmddata_write(m, NULL, 0, &n) == CMDDATA_E_BUFFER_TOO_SMALL && n == 32);
    CHECK(cmddata_write(m, bytes, sizeof bytes, &n) == CMDDATA_OK && n == 32);
    CHECK(strcmp(hex(bytes, n), "5100000007000000000000000000000000000000"
                                "010000000600" "4a0054000000") == 0);
    CHECK(cmddata_to_json(m, json, 8, &needed) == CMDDATA_E_BUFFER_TOO_SMALL);
    CHECK(cmddata_to_json(m, json, needed, &needed) == CMDDATA_OK);
    CHECK(strstr(json, "\"vin\":\"JT\"") != NULL && strlen(json) + 1 == needed);

    /* Bad JSON leaves the object as it was and says where. */
    CHECK(cmddata_from_json(m, "{\"status_word_1\":4294967296}", error, sizeof error) ==
          CMDDATA_E_BAD_JSON);
    CHECK(strcmp(error, "status_word_1: 4294967296 does not fit u32") == 0);
    CHECK(cmddata_from_json(m, "{\"vin\":", error, 8) == CMDDATA_E_BAD_JSON && strlen(error) == 7);
    CHECK(cmddata_write(m, bytes, sizeof bytes, &n) == CMDDATA_OK && n == 32);
    CHECK(cmddata_from_json(m, "not json", NULL, 0) == CMDDATA_E_BAD_JSON);

    /* Reading: a whole message, then one cut short. */
    {
        cmddata_message* r = cmddata_new("CGetVINRcv", -1);
        size_t consumed = 0;
        CHECK(cmddata_read(r, bytes, n, &consumed) == CMDDATA_OK && consumed == n);
        CHECK(cmddata_to_json(r, json, sizeof json, &needed) == CMDDATA_OK);
        CHECK(strstr(json, "\"status_word_1\":7") != NULL);
        CHECK(cmddata_read(r, bytes, n - 3, &consumed) == CMDDATA_PAST_END);
        CHECK(cmddata_read(NULL, bytes, n, &consumed) == CMDDATA_BAD_ARGUMENT);
        cmddata_free(r);
    }

    /* Decoding finds the command and the side from the bytes alone. */
    {
        cmddata_message* d = NULL;
        CHECK(cmddata_decode(bytes, n, &d) == CMDDATA_OK && d != NULL);
        CHECK(d != NULL && strcmp(cmddata_message_class(d), "CGetVINRcv") == 0);
        cmddata_free(d);
        CHECK(cmddata_decode(bytes, n + 1, &d) == CMDDATA_E_NOT_DECODED && d == NULL);
        CHECK(cmddata_decode("\xff\xff\xff\xff", 4, &d) == CMDDATA_E_NOT_DECODED);
    }
    cmddata_free(m);
    cmddata_free(NULL);
    CHECK(strcmp(cmddata_result_name(CMDDATA_PAST_END), "past the end of the region") == 0);
    CHECK(strcmp(cmddata_result_name(CMDDATA_E_BAD_JSON), "not JSON of the class") == 0);
}

static void region(void) {
    char name[64];
    cmddata_region* mine = NULL;
    cmddata_region* theirs = NULL;
    cmddata_message* sent = cmddata_new("CGetVINRcv", -1);
    cmddata_message* received = cmddata_new("CGetVINRcv", -1);
    size_t n = 0, consumed = 0;
    char json[256];
    int local = 0;
    sprintf(name, "cmddata-c-%lx-%lx", (unsigned long)time(NULL),
            (unsigned long)((size_t)&local & 0xFFFFFF));
    CHECK(cmddata_region_create(name, 4096, &mine) == CMDDATA_OK && mine != NULL);
    CHECK(cmddata_region_create(name, 4096, &theirs) == CMDDATA_E_NO_REGION && theirs == NULL);
    CHECK(cmddata_region_open(name, &theirs) == CMDDATA_OK && theirs != NULL);
    CHECK(cmddata_region_size(theirs) >= 4096);
    CHECK(cmddata_from_json(sent, "{\"vin\":\"W0L\",\"status_word_3\":3}", NULL, 0) == CMDDATA_OK);
    CHECK(cmddata_region_write(mine, sent, &n) == CMDDATA_OK && n == 34);
    CHECK(cmddata_region_read(theirs, received, &consumed) == CMDDATA_OK && consumed == n);
    CHECK(cmddata_to_json(received, json, sizeof json, NULL) == CMDDATA_OK);
    CHECK(strstr(json, "\"vin\":\"W0L\"") != NULL && strstr(json, "\"status_word_3\":3") != NULL);
    cmddata_region_close(theirs);
    cmddata_region_close(mine);
    CHECK(cmddata_region_open("cmddata-c-no-such-region", &theirs) == CMDDATA_E_NO_REGION);
    cmddata_free(sent);
    cmddata_free(received);
}

int main(void) {
    classes();
    bytes_and_json();
    region();
    printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}
