// What each command-line option does.
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/machinery/files/missing_file.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace hyxOSG {

bool ExampleApplication::init(hyxIO::ArgumentParser* parser, bool withGraphics) {
    m_implementation->arguments = parser;
    if (parser && parser->isHelpRequested())
        return false;
    if (parser)
        m_implementation->applyOptions(*this, *parser);
    if (withGraphics) {
        m_implementation->ensureSimulation();
        initGraphics();
        initRpc();
        initScene();
    }
    return true;
}

hyxIO::ArgumentParser* ExampleApplication::getArguments() {
    return m_implementation->arguments.get();
}

void ExampleApplication::Implementation::applyOptions(ExampleApplication& application,
                                                      hyxIO::ArgumentParser const& options) {
    applyWindowOptions(application, options);
    if (options.has("--debug-frames"))
        debugFrames = true;
    if (options.has("--model"))
        modelName = options.getString("--model");
    if (options.has("--bundle-path")) {
        std::istringstream folders(options.getString("--bundle-path"));
        for (std::string folder; std::getline(folders, folder, ':');)
            bundlePaths.push_back(folder);
    }
    testsScenes = options.has("--test-scenes");
    slowTests = options.has("--slow-scenes");
    if (options.has("--script"))
        application.addScene(options.getString("--script"), "buildScene");
    if (options.has("--rpc-port"))
        remotePort = int(options.getInteger("--rpc-port"));
    if (options.has("--co-simulation-port"))
        coSimulationPort = int(options.getInteger("--co-simulation-port"));
    if (options.has("--click-port"))
        clickPort = int(options.getInteger("--click-port"));
    if (options.has("--rpc-token"))
        remoteToken = options.getString("--rpc-token");
    if (options.has("--profile")) {
        profiler.setPath(options.getString("--profile"));
        profiler.setTimeline(true);
        profiler.setTaskProfile(true);
    }
    for (hyx::String const& file : options.getPositional())
        if (!isFolder(file)) // the program's own, as what is of no known kind
            application.openFile(file);
    applyLoopOptions(application, options);
    applyRecordingOptions(application, options);
}

void ExampleApplication::Implementation::applyWindowOptions(ExampleApplication& application,
                                                            hyxIO::ArgumentParser const& options) {
    long first = 0, second = 0;
    if (options.has("--window-size")) {
        options.getSize("--window-size", first, second);
        windowRequest.width = int(first);
        windowRequest.height = int(second);
    }
    if (options.has("--window-position")) {
        options.getSize("--window-position", first, second);
        windowRequest.x = int(first);
        windowRequest.y = int(second);
    }
    if (options.has("--samples"))
        application.setNumSamples(int(options.getInteger("--samples")));
    if (options.has("--full-screen"))
        windowRequest.fullScreen = true;
    if (options.has("--offscreen"))
        windowRequest.kind = WindowKind::OFFSCREEN;
    if (options.has("--no-graphics"))
        noGraphics = true;
}

void ExampleApplication::Implementation::applyLoopOptions(ExampleApplication& application,
                                                          hyxIO::ArgumentParser const& options) {
    if (options.has("--time-step"))
        application.setTimeStep(options.getReal("--time-step"));
    if (options.has("--stop-after"))
        stopTime = options.getReal("--stop-after");
    if (options.has("--target-fps"))
        pacer.setTargetFps(options.getReal("--target-fps"));
    if (options.has("--real-time"))
        application.setRealTimeSync(true);
    if (options.has("--speed"))
        application.setSpeed(options.getReal("--speed"));
    if (options.has("--status"))
        application.setEnableStatus(true);
    if (options.has("--start-paused"))
        application.setAutoStepping(false, false);
    if (options.has("--scene"))
        firstScene = int(options.getInteger("--scene"));
    if (options.has("--solver")) {
        std::string const name = options.getString("--solver");
        SolverType const solver = application.getSolverType(name);
        if (solver == NUM_SOLVERS)
            throw std::invalid_argument("there is no solver '" + name + "': choose multi or iterative");
        application.setSolverType(solver);
    }
}

void ExampleApplication::Implementation::applyRecordingOptions(ExampleApplication& application,
                                                               hyxIO::ArgumentParser const& options) {
    std::string const session = options.has("--journal-session") ? "#" + options.getString("--journal-session") : "";
    if (options.has("--journal-frequency"))
        journalSettings.frequency = options.getReal("--journal-frequency");
    if (options.has("--journal-play"))
        journalPlaybackPath = options.getString("--journal-play") + session;
    if (options.has("--journal-loop"))
        journalLoop = true;
    if (options.has("--journal-record")) {
        journalRecordPath = options.getString("--journal-record") + session;
        startRecording(options.has("--journal-append"));
    }
    if (options.has("--capture")) {
        ImageCapture* capture = application.getImageCapture();
        capture->setPrefix(options.getString("--capture"));
        if (options.has("--capture-rate"))
            capture->setFps(options.getReal("--capture-rate"));
        capture->startCapture();
    }
    if (options.has("--capture-video")) {
        VideoFFMPEGPipeCapture* capture = application.getVideoServerCapture();
        std::filesystem::path const film(std::string(options.getString("--capture-video")));
        capture->setFilename((film.parent_path() / film.stem()).string());
        if (film.has_extension())
            capture->setVideoPostFix(film.extension().string());
        if (options.has("--capture-rate")) {
            capture->setFps(options.getReal("--capture-rate"));
            capture->setVideoFPS(options.getReal("--capture-rate"));
        }
        filmWaits = true;
    }
}

} // namespace hyxOSG
