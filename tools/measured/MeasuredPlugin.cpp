#include "measured/MeasuredPlugin.h"

using hostkit::PluginLibrary;

MeasuredPlugin::MeasuredPlugin(std::size_t frameBytes)
    : m_lightHost(m_host, frameBytes),
      m_plugin(PluginLibrary::programFolder() / PluginLibrary::usualFileName()),
      m_spy(m_plugin),
      m_session(m_host, m_plugin.entry()) {
    m_session.start();
}

MeasuredPlugin::~MeasuredPlugin() { m_session.shutdown(); }
