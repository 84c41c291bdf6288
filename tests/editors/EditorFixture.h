#pragma once

#include "support/FakeDocumentHost.h"
#include "support/WorkDbFixture.h"

namespace quillon::test {

// A working database holding a sample experiment, opened as File Open does,
// with the windows faked. The sample suite is the data folder and is only
// read.
class EditorTest : public WorkDbTest {
protected:
    void SetUp() override;
    // Opens a sample experiment ("Maize/QLNV2101.MZX") and forgets the
    // messages of the opening.
    void open(const QString& relative);

    FakeHost m_host;
};

} // namespace quillon::test
