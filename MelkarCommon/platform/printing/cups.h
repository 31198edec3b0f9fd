#pragma once

#include <MelkarCommon/platform/files/late_library.h>

#include <cups/cups.h>

/// @file
/// Internal. The print library, which most processes never need.

namespace melkar {

struct CupsLibrary : LateLibrary {
    CupsLibrary();

    MELKAR_LATE(cupsDoAuthentication);
    MELKAR_LATE(cupsEncryption);
    MELKAR_LATE(cupsLastErrorString);
    MELKAR_LATE(cupsServer);
    MELKAR_LATE(cupsSetPasswordCB2);
    MELKAR_LATE(cupsUser);

    MELKAR_LATE(httpAddrCopyList);
    MELKAR_LATE(httpAddrFamily);
    MELKAR_LATE(httpAddrFreeList);
    MELKAR_LATE(httpAddrGetList);
    MELKAR_LATE(httpAssembleURIf);
    MELKAR_LATE(httpClearFields);
    MELKAR_LATE(httpClose);
    MELKAR_LATE(httpConnect2);
    MELKAR_LATE(httpError);
    MELKAR_LATE(httpFlushWrite);
    MELKAR_LATE(httpGetAddress);
    MELKAR_LATE(httpGetAuthString);
    MELKAR_LATE(httpGetFd);
    MELKAR_LATE(httpGetState);
    MELKAR_LATE(httpPost);
    MELKAR_LATE(httpRead2);
    MELKAR_LATE(httpReconnect2);
    MELKAR_LATE(httpSeparateURI);
    MELKAR_LATE(httpSetExpect);
    MELKAR_LATE(httpSetField);
    MELKAR_LATE(httpSetLength);
    MELKAR_LATE(httpStatus);
    MELKAR_LATE(httpUpdate);
    MELKAR_LATE(httpWait);
    MELKAR_LATE(httpWrite2);

    MELKAR_LATE(ippAddInteger);
    MELKAR_LATE(ippAddString);
    MELKAR_LATE(ippAddStrings);
    MELKAR_LATE(ippContainsString);
    MELKAR_LATE(ippDelete);
    MELKAR_LATE(ippErrorString);
    MELKAR_LATE(ippFindAttribute);
    MELKAR_LATE(ippFirstAttribute);
    MELKAR_LATE(ippGetCollection);
    MELKAR_LATE(ippGetCount);
    MELKAR_LATE(ippGetGroupTag);
    MELKAR_LATE(ippGetInteger);
    MELKAR_LATE(ippGetName);
    MELKAR_LATE(ippGetStatusCode);
    MELKAR_LATE(ippGetString);
    MELKAR_LATE(ippNew);
    MELKAR_LATE(ippNewRequest);
    MELKAR_LATE(ippNextAttribute);
    MELKAR_LATE(ippPort);
    MELKAR_LATE(ippReadIO);
    MELKAR_LATE(ippWriteIO);
};

/// Loaded by the first call. Who looks for a printer at a server asks whether it is whole; from there on it is.
const CupsLibrary& Cups();

} // namespace melkar
