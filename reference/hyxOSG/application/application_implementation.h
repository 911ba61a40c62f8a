// What an application holds.
#pragma once

#include "platform/hyx/journal/journal.h"
#include "platform/hyxIO/argument_parser.h"
#include "platform/hyxNet/co_simulation_server.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/application/example_application_controller.h"
#include "platform/hyxOSG/application/render_proxy_factory.h"
#include "platform/hyxOSG/capture/image_capture.h"
#include "platform/hyxOSG/capture/render_to_texture.h"
#include "platform/hyxOSG/capture/video_ffmpeg_pipe_capture.h"
#include "platform/hyxOSG/picking/pick_handler.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/auto_pause.h"
#include "reference/hyxOSG/application/change_watch.h"
#include "reference/hyxOSG/application/debug_renderer.h"
#include "reference/hyxOSG/application/first_view.h"
#include "reference/hyxOSG/application/frame_times.h"
#include "reference/hyxOSG/application/grid_markers.h"
#include "reference/hyxOSG/application/history.h"
#include "reference/hyxOSG/application/listener_hold.h"
#include "reference/hyxOSG/application/pacer.h"
#include "reference/hyxOSG/application/profiler.h"
#include "reference/hyxOSG/application/scene_changes.h"
#include "reference/hyxOSG/application/scene_graph.h"
#include "reference/hyxOSG/application/scene_list.h"
#include "reference/hyxOSG/application/screen_notes.h"
#include "reference/hyxOSG/application/selection.h"
#include "reference/hyxOSG/application/simulation_dump.h"
#include "reference/hyxOSG/application/viewer_window.h"
#include "reference/machinery/context/file_drops.h"
#include "reference/machinery/viewing/follow_manipulator.h"

#include <osgGA/OrbitManipulator>

#include <functional>
#include <map>
#include <optional>

namespace hyxOSG {

/// The parts of an application, each with its own behaviour; the application's operations join them.
struct ExampleApplication::Implementation {
    explicit Implementation(ExampleApplication& owner) : owner(owner) {}

    ExampleApplication& owner;
    hyx::ref_ptr<hyxIO::ArgumentParser> arguments;
    hyx::ref_ptr<hyxSDK::Simulation> simulation;
    std::optional<double> wantedTimeStep; ///< for simulations to come
    std::optional<SolverType> wantedSolver;

    // The loop
    std::mutex frameMutex;
    ListenerHolds listeners;
    hyx::Callback stepCallback;
    Pacer pacer;
    FrameTimes times;
    ChangeWatch changes;
    History history;
    std::optional<double> historyWanted; ///< seconds; without a wish, some where a user watches
    bool raisesErrors = false;           ///< `run` ends with the first error of a script
    bool running = false;                ///< in `run`: the loop decides when a picture is due
    AutoPause autoPause;
    Profiler profiler;
    SimulationDump simulationDump;
    bool autoStepping = true;
    bool pauseUpdate = true;
    bool stopRequested = false;
    bool inTurn = false; ///< a frame is being made
    bool quitEventSetsDone = true;
    int exitCode = 0;
    double stopTime = -1;                    ///< simulated seconds; negative for never
    size_t errorsSeen = countScriptErrors(); ///< script errors that were handled
    bool realTimeSyncSet = false;            ///< by the user: the kind of window no longer decides

    // What is drawn
    SceneGraph graph{1024, 768};
    GridMarkers markers{graph.markers()};
    DebugRenderer debug{graph.debugRoot()};
    hyx::ref_ptr<RenderProxyFactory> proxies = new RenderProxyFactory(graph.libraryRoot());

    // Window and camera; the viewer is null until it is made
    std::shared_ptr<ViewerWindow> window; ///< shared with the call that a listener may replace it in
    std::unique_ptr<FileDrops> drops;     ///< on a window of the display
    WindowRequest windowRequest{.width = 1024, .height = 768, .title = "hyxOSG", .samples = 4};
    bool noGraphics = false;                                   ///< `run` opens no window
    osg::ref_ptr<osgGA::OrbitManipulator> orbit = makeOrbit(); ///< the camera's home is here
    osg::ref_ptr<FollowManipulator> follow;                    ///< null while the camera follows nothing
    hyx::ref_ptr<PickHandler> pickHandler;
    osg::ref_ptr<osgGA::GUIEventHandler> eventHandler; ///< keys, resize, listeners
    bool homeSet = false;
    osg::ref_ptr<FirstView> firstView =
        new FirstView(graph, [this](osg::BoundingBox const& box) { takeFirstView(box); });
    bool osgRenderer = true;
    ScreenNotes notes{&owner};
    Selection selection{graph.root()};
    bool helpShown = false;
    bool statusShown = false;
    Pacer::Clock::time_point statusMade{};

    // Scenes
    SceneList scenes;
    std::optional<SceneDescription> presentScene;
    std::optional<SceneDescription> failedScene; ///< tried last, and not built; "r" tries it again
    std::optional<size_t> presentIndex;
    std::string sceneError; ///< shown on the picture; empty for none
    bool sceneBuilt = false;
    SceneChanges sceneChanges; ///< by the present scene
    int firstScene = 0;
    std::optional<std::string> firstState; ///< restored after the first scene
    bool testsScenes = false;              ///< `run` goes through the scenes that take part in tests
    bool slowTests = false;                ///< the slow ones too
    std::string scriptFile;
    osg::ref_ptr<osg::Group> scriptGroup; ///< keeps the last group that a script returned

    // Journal
    hyx::ref_ptr<hyx::Journal> journal = new hyx::Journal;
    hyx::Journal::Settings journalSettings;
    std::string journalConfigurationPath;
    std::string journalRecordPath;
    std::string journalPlaybackPath;
    bool journalLoop = false;
    size_t recordedScenes = 0; ///< sessions of the present recording
    bool playsFirst = false;   ///< nothing of the journal was shown yet
    double playedTime = 0;     ///< recorded time that playback has reached

    // Capture
    hyx::ref_ptr<ImageCapture> imageCapture;
    hyx::ref_ptr<VideoFFMPEGPipeCapture> videoCapture;
    bool filmWaits = false; ///< asked for by options: begins with the window, in its size
    hyx::ref_ptr<RenderToTexture> renderToTexture;
    /// With the node that each draws; null for the scene.
    std::map<RenderTarget*, std::pair<hyx::ref_ptr<RenderTarget>, osg::ref_ptr<osg::Node>>> renderTargets;
    bool captureSync = true;

    // Remote control and co-simulation; null while not asked for
    hyx::ref_ptr<ExampleApplicationController> controller;
    hyx::ref_ptr<hyxNet::CoSimulationServer> coSimulation;
    hyx::ref_ptr<hyxNet::CoSimulationServer> click; ///< answers the same, while the loop steps on its own
    std::optional<int> remotePort;                  ///< asked for by options; 0 for any free one
    std::optional<int> coSimulationPort;
    std::optional<int> clickPort;
    std::string remoteToken; ///< empty: one is made
    bool tickSignals = false;

    // Models
    std::string modelName; ///< the one to load from a file; empty for its only one
    std::vector<std::string> bundlePaths;
    bool debugFrames = false;

    /// For the time of a call that reaches listeners: one of them may drop the last outside reference.
    static hyx::ref_ptr<ExampleApplication> keep(ExampleApplication& application) {
        return application.getReferenceCount() > 0 ? &application : nullptr;
    }

    static size_t countScriptErrors();
    hyxSDK::Simulation& ensureSimulation();
    static osg::ref_ptr<osgGA::OrbitManipulator> makeOrbit();
    std::shared_ptr<ViewerWindow> ensureWindow(ExampleApplication& application);
    void openWindow(WindowRequest const& request);
    /// Input of the window, and files that were dropped on it.
    void handleEvents(ExampleApplication& application);
    void startRecording(bool append);
    /// The scene has changed: what is recorded from now on is a session of its own.
    void recordNextScene();
    /// With the session's name.
    std::pair<hyx::Journal::Settings, std::string> recordingSettings();
    /// Shows the next state of the journal that is played; at its end it begins again, or pauses.
    void playStep(ExampleApplication& application);
    /// Moves in the journal, with visuals for the bodies that it brings.
    bool playFrom(std::function<bool()> const& move);
    void keepHistory();
    hyx::ref_ptr<hyxNet::CoSimulationServer> serve(ExampleApplication& application, char const* service,
                                                   int port) const;
    void configureSimulation();
    /// Takes `next` over as the simulation that is shown; null for none.
    void showSimulation(hyxSDK::Simulation* next);
    void applyOptions(ExampleApplication& application, hyxIO::ArgumentParser const& options);
    void applyWindowOptions(ExampleApplication& application, hyxIO::ArgumentParser const& options);
    void applyLoopOptions(ExampleApplication& application, hyxIO::ArgumentParser const& options);
    void applyRecordingOptions(ExampleApplication& application, hyxIO::ArgumentParser const& options);
    /// One turn of the loop.
    void turn(ExampleApplication& application, bool withGraphics);
    void makeFrame(ExampleApplication& application, bool draws);
    void draw();
    /// Whether anyone would miss the view: a display, a capture, a callback. With render targets alone it is not drawn,
    /// until its picture is asked for.
    bool viewIsWanted() const;
    /// Whether this frame draws: a paused loop draws what has changed.
    bool drawingDue();
    void updateNotes(ExampleApplication const& application);
    /// Brings what is shown beside the bodies up to date, for a picture out of the loop's turn.
    void showPresentState(ExampleApplication const& application);
    /// All that follows a simulation step.
    void followStep(ExampleApplication& application);
    /// The settings that belong to the scene that changes them, as they are now.
    SceneChanges watchSettings(ExampleApplication& application);
    void watchView(SceneChanges& changes);
    /// Takes away what the present scene consists of; its settings stay.
    void emptyScene(ExampleApplication& application);
    /// Builds the scene in place of the present one. When it fails, by an exception or false with a script's error
    /// pending, the present scene is as it was.
    bool buildScene(ExampleApplication& application, SceneDescription const& description, bool keepCamera);
    /// Runs each scene that takes part in tests, for its time, and prints how it went; the exit code is 1 when one
    /// failed.
    void testScenes(ExampleApplication& application);
    /// What went wrong with the scene; empty when it passed.
    std::string testScene(ExampleApplication& application, size_t index);
    void showFile(ExampleApplication& application, std::string const& path);
    osg::ref_ptr<osg::Group> runBuilder(ExampleApplication& application, SceneDescription const& description, bool& ok);
    osg::ref_ptr<osg::Group> readSceneFile(std::string const& path, bool& ok);
    void useManipulator(osgGA::CameraManipulator* manipulator);
    /// Ends the following, with the view that the orbit had before.
    void useOrbit();
    /// Shows `box` from a little to the right and above, unless a view was chosen.
    void takeFirstView(osg::BoundingBox const& box);
    /// Ends the following, with the present view.
    void endFollowing();
};

} // namespace hyxOSG
