#include "open/Readers.h"
#include "open/Stopwatch.h"

#include <cmath>
#include <memory>
#include <stdexcept>

#include <gst/gst.h>

namespace {

struct Unref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};

// Blocks a stream's data: nobody consumes it, only the opening is measured.
GstPadProbeReturn keepBlocked(GstPad*, GstPadProbeInfo*, gpointer) {
    return GST_PAD_PROBE_OK;
}

void onPadAdded(GstElement*, GstPad* pad, gpointer) {
    gst_pad_add_probe(pad, static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BLOCK | GST_PAD_PROBE_TYPE_BUFFER),
                      keepBlocked, nullptr, nullptr);
}

// All streams are known, and so is the index. The message wakes the waiting thread.
void onNoMorePads(GstElement* demuxer, gpointer) {
    gst_element_post_message(
        demuxer, gst_message_new_application(GST_OBJECT(demuxer), gst_structure_new_empty("all-streams")));
}

void waitForStreams(GstElement* pipeline, const std::string& path) {
    const std::unique_ptr<GstBus, Unref> bus(gst_element_get_bus(pipeline));
    GstMessage* message = gst_bus_timed_pop_filtered(
        bus.get(), 60 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_APPLICATION | GST_MESSAGE_ERROR));
    const bool arrived = message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_APPLICATION;
    if (message) {
        gst_message_unref(message);
    }
    if (!arrived) {
        throw std::runtime_error("GStreamer cannot open " + path);
    }
}

}  // namespace

bench::Opening bench::openWithGStreamer(const std::string& path, double seconds) {
    gst_init(nullptr, nullptr);
    const std::unique_ptr<GstElement, Unref> pipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    GstElement* source = gst_element_factory_make("filesrc", nullptr);
    GstElement* demuxer = gst_element_factory_make("avidemux", nullptr);
    if (!source || !demuxer) {
        throw std::runtime_error("GStreamer has no filesrc or avidemux");
    }
    g_object_set(source, "location", path.c_str(), nullptr);
    gst_bin_add_many(GST_BIN(pipeline.get()), source, demuxer, nullptr);
    gst_element_link(source, demuxer);
    g_signal_connect(demuxer, "pad-added", G_CALLBACK(onPadAdded), nullptr);
    g_signal_connect(demuxer, "no-more-pads", G_CALLBACK(onNoMorePads), nullptr);

    const Stopwatch stopwatch;
    gst_element_set_state(pipeline.get(), GST_STATE_PAUSED);
    waitForStreams(pipeline.get(), path);
    Opening result;
    result.seconds = stopwatch.seconds();

    gint64 duration = 0;
    const bool known = gst_element_query_duration(demuxer, GST_FORMAT_TIME, &duration);
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    if (!known || std::abs(static_cast<double>(duration) / GST_SECOND - seconds) > 1) {
        throw std::runtime_error("GStreamer reports for " + path + " a duration of " +
                                 std::to_string(static_cast<double>(duration) / GST_SECOND) + " s");
    }
    return result;
}
