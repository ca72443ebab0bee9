#include "codeset/kst.h"

#include <cstring>

size_t kst_to_utf8(kst_handle, const char* src, long srcLen, char* dst, size_t dstLen)
{
    if (dstLen == 0)
        return 0;
    const size_t length = srcLen < 0 ? strlen(src) : static_cast<size_t>(srcLen);
    const size_t room = srcLen < 0 ? dstLen - 1 : dstLen;
    const size_t copied = length < room ? length : room;
    memcpy(dst, src, copied);
    if (srcLen < 0)
        dst[copied] = '\0';
    return srcLen < 0 ? copied + 1 : copied;
}
