// For tests of the samples that the host receives: loads the plug-in once for all tests of a suite.
#pragma once

#include "audio/support/ReferenceSound.h"
#include "audio/support/SoundClip.h"
#include "support/LoadedImporter.h"

#include <gtest/gtest.h>

#include <memory>

class SoundTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { s_importer = std::make_unique<LoadedImporter>(); }
    static void TearDownTestSuite() { s_importer.reset(); }

    // The host detects writes past its buffers.
    void TearDown() override { EXPECT_EQ(host().violations(), Lines{}); }

    static hostkit::Host& host() { return s_importer->host(); }
    static hostkit::ImporterSession& session() { return s_importer->session(); }

private:
    static inline std::unique_ptr<LoadedImporter> s_importer;
};
