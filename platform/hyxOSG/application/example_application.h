// The ready-made application: a window, a viewer, a scene graph and the loop that steps a simulation.
#pragma once

#include "platform/hyx/objects/callback.h"
#include "platform/hyx/objects/event.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/string.h"
#include "platform/hyx/values/vec2.h"
#include "platform/hyx/values/vec2u.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxOSG/application/camera_data.h"
#include "platform/hyxOSG/application/scene_description.h"
#include "platform/hyxtavlang/load_result.h"
#include "platform/hyxtavlang/opt_params.h"

#include <osg/Notify>

#include <functional>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

namespace osg {
class Camera;
class Group;
class Node;
} // namespace osg

namespace osgGA {
class CameraManipulator;
typedef CameraManipulator MatrixManipulator;
} // namespace osgGA

namespace osgViewer {
class Viewer;
} // namespace osgViewer

namespace hyx {
class HighAccuracyTimer;
class Journal;
class RigidBody;
} // namespace hyx

namespace hyxCollide {
class Geometry;
} // namespace hyxCollide

namespace hyxIO {
class ArgumentParser;
} // namespace hyxIO

namespace hyxNet {
class CoSimulationServer;
} // namespace hyxNet

namespace hyxSDK {
class Assembly;
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

class ExampleApplicationController;
class ExampleApplicationListener;
class GeometryNode;
class ImageCapture;
class Panel;
class PickHandler;
class RenderProxyFactory;
class RenderTarget;
class RenderToTexture;
class SceneDecorator;
class VideoFFMPEGPipeCapture;

/// A window, a viewer, a scene graph and the loop that steps a simulation and draws it.
///
/// Usual order: construct, `init`, `addScene` ..., `run`. Or driven by the caller: `initSimulation`, `initViewer`,
/// `initScene`, then `executeOneStepWithGraphics` until `done`. What a step needs and was not set up yet is set up
/// with its defaults. Everything runs on the calling thread. Units are SI; Z is up.
class ExampleApplication : public hyx::Referenced {
public:
    /// Bits of node masks; a camera that lacks a bit does not draw the nodes that have only that bit.
    enum NodeMask {
        MAIN_SCENE_MASK = 0x02,       ///< the scene
        DEBUG_RENDER_MASK = 0x04,     ///< shapes, contacts and constraints as lines
        OSG_RENDER_MASK = 0x08,       ///< everything that is drawn by the scene graph
        HUD_MASK = 0x10,              ///< text and pictures on the screen
        DECORATOR_MASK = 0x20,        ///< background, lights, sky
        CASTS_SHADOWS_MASK = 0x40,    ///< casts a shadow
        RECIEVES_SHADOWS_MASK = 0x80, ///< is shaded
    };

    /// The solver of the simulation's constraints and contacts.
    enum SolverType {
        MULTI = 0,     ///< non-smooth conjugate gradient: slower, stiffer
        ITERATIVE = 1, ///< sequential impulses: the default
        NUM_SOLVERS = 2,
    };

    /// Carries whether automatic stepping was switched on or off.
    class AutoStepEvent : public hyx::TypedEvent<bool> {};

    /// An application that makes its own simulation when one is first needed.
    ExampleApplication();

    /// An application around `simulation`; null is the same as none.
    explicit ExampleApplication(hyxSDK::Simulation* simulation);

    // ---- Creation and initialisation

    /// Follows the options of `parser` (`--help` lists them); null means none. With `withGraphics` simulation, window
    /// and scene are made at once instead of when they are needed. Returns false when the program has nothing left
    /// to do (`--help` was given). Throws std::invalid_argument for a malformed value.
    bool init(hyxIO::ArgumentParser* parser, bool withGraphics = false);

    /// Takes `simulation` over, or makes a new one for null; the one before is let go with its visuals. With
    /// `applyOptions` the time step and solver asked for by options are applied to it.
    void initSimulation(hyxSDK::Simulation* simulation = nullptr, bool applyOptions = true);

    /// Makes the window, `width` x `height` pixels. A window on the display where there is one, else an off-screen one;
    /// `offscreen` demands an off-screen one, and the environment variable HYX_DISPLAY (`window`, `offscreen`, `auto`)
    /// decides over everything. Throws std::invalid_argument for sizes outside 1..16384 and std::runtime_error when
    /// no window can be made.
    void initViewer(int width, int height, bool offscreen = false);

    /// Gives the viewer camera, manipulator and event handlers, as `initViewer` does; other values take the latter two
    /// away.
    void setupViewer(bool manipulator = true, bool pickHandler = true);

    /// Makes the viewer with the size of the options, or 1024 x 768, when there is none yet.
    void initGraphics();

    /// Opens what the options `--rpc-port` (remote control), `--co-simulation-port` (another process steps) and
    /// `--click-port` (another process drives joints) ask for, on the loopback address unless `m_hostName` names
    /// another, and prints the addresses with the token that guards them: that of `--rpc-token`, or one that is made.
    /// Throws std::runtime_error when a port is in use.
    void initRpc();

    /// Builds the first scene that was added, or that of the option `--scene`, or an empty one; then begins to play a
    /// journal that was asked for. Throws std::invalid_argument when there is no scene of that number.
    void initScene();

    /// Shows `scene` as the scene; null shows none. Throws std::invalid_argument for a group above the scene's root.
    void initScene(osg::Group* scene);

    /// Whether simulation, viewer and scene are all there.
    bool initialized() const;

    /// The arguments given to `init`; null when there were none.
    hyxIO::ArgumentParser* getArguments();

    /// The factory of visuals for simulations, made on first use.
    hyxOSG::RenderProxyFactory* getRenderProxyFactory();

    /// Makes visuals for all bodies of `simulation` under the library's own group. `detailRatio` scales the number of
    /// facets of round shapes; with `evenIfSensor` sensors are drawn too. Does nothing for null.
    void createVisual(hyxSDK::Simulation* simulation, float detailRatio = 1.0f, bool evenIfSensor = false);

    /// Makes visuals for all bodies of `assembly`; as for a simulation.
    void createVisual(hyxSDK::Assembly* assembly, float detailRatio = 1.0f, bool evenIfSensor = false);

    /// Chooses which messages of the scene-graph library are printed: `severity` and worse.
    void setOsgNotifyLevel(osg::NotifySeverity severity) const;

    // ---- Main loop and stepping

    /// Runs the loop until it is stopped, the window is closed or the time is over. Returns the exit code. An
    /// interrupt from the keyboard, and an error that a script leaves, end it at the next frame. With the option
    /// `--test-scenes` it runs each scene that takes part in tests instead, for the scene's time or a second, prints
    /// how it went, and returns 1 when one failed.
    int run();

    /// Whether `run` ends with the first error that a script's callback raised while it ran, after the loop and all
    /// that follows it; false at first: then it was only printed.
    void setRaiseScriptErrors(bool enable);
    bool getRaiseScriptErrors() const;

    /// Ends the loop after this frame; `code` becomes the exit code.
    void stop(int code = 0);

    /// Takes a `stop` back that was not followed yet.
    void cancelStop();

    /// Whether the loop was told to stop, or the time of `stopAfter` is over.
    bool shouldStop() const;

    /// Whether the interpreter asks for the end: an interrupt from the keyboard or a script error is pending.
    bool breakRequested() const;

    /// Whether the loop has nothing left to do: it should stop, a break is requested or the window is closed.
    bool done() const;

    /// The code given to `stop`, or 0.
    int getExitCode() const;

    /// One turn of the loop: listeners, events, simulation when stepping automatically, drawing.
    void step();

    /// `step` with the failures of scripts reported, as the loop does it.
    void stepWrapper();

    /// Steps the simulation once, and all that follows its time: journal, callback, capture, co-simulation.
    void stepSimulation();

    /// Steps the simulation as often as real time has passed since the last call, until the frame's time is used. With
    /// `force` at least once.
    void synchronizedStep(bool force = false);

    /// One turn of the loop with drawing; `timer` is reset at its start, so that it holds its cost afterwards.
    /// Returns whether the loop goes on.
    bool executeOneStepWithGraphics(hyx::HighAccuracyTimer& timer);

    /// One turn of the loop without drawing. Returns whether the loop goes on.
    bool executeOneStepWithoutGraphics();

    /// Serves remote control, co-simulation and remote viewer once.
    void updateServices();

    /// What follows the loop: closes journals, captures and traces. Can be called again.
    void postExecution();

    /// Sleeps a moment when the simulation is not stepping, so that a paused application does not use a whole core.
    void throttleIdleCpuUsageBySleeping();

    /// Sets the length of a simulation step in seconds. Throws std::invalid_argument unless it is positive and finite.
    void setTimeStep(double timeStep);
    /// Length of a simulation step in seconds.
    double getTimeStep() const;
    /// Simulated seconds since the start of the scene.
    double getTimeStamp() const;

    /// Ends the loop when `time` simulated seconds are reached; negative for never. NaN is refused.
    void stopAfter(double time);

    /// Limits the loop to `framesPerSecond` by sleeping; 0 or less for no limit. NaN is refused.
    void setTargetFPS(double framesPerSecond);
    /// Frames per second that the loop is limited to; 0 for no limit.
    double getTargetFPS() const;

    /// Keeps simulated time at the pace of real time: waits when ahead, steps as often in a frame as its time allows
    /// when behind, and draws 60 frames a second unless `setTargetFPS` says otherwise. A simulation more than a quarter
    /// of a second behind does not catch up.
    void setRealTimeSync(bool enable);
    /// Whether simulated time follows real time; false at first when off-screen.
    bool getRealTimeSync() const;

    /// Simulated seconds in a second of real time: 1 at first, 0.1 is slow motion. Another speed than 1 switches real
    /// time on. Throws std::invalid_argument unless it is positive and finite.
    void setSpeed(double speed);
    /// Simulated seconds in a second of real time that are asked for.
    double getSpeed() const;
    /// Simulated seconds in a second of real time that the loop has come to in the last half second.
    double getRealTimeFactor() const;
    /// Frames a second in the last half second.
    double getFrameRate() const;

    /// Keeps the last `seconds` of the simulation in memory, at most 64 MiB of states, to go back to; 0 keeps none.
    /// Unless it is set, a run that a user watches keeps 10.
    void setHistoryLength(double seconds);
    double getHistoryLength() const;
    /// First and last time that can be gone back to: of the history, or of the journal that is played.
    hyx::Vec2 getHistorySpan() const;
    /// Pauses, and goes so many kept states forward, or back (negative). What is stepped from there takes the place of
    /// what had followed. Returns whether it went anywhere.
    bool scrub(int states);
    /// Goes to the last kept state at or before `time`, or to the first one. Returns false when none is kept.
    bool goToTime(double time);

    /// Switches stepping by the loop on or off (pause). With `triggerEvent` the event `autoStepEvent` is raised.
    void setAutoStepping(bool enable, bool triggerEvent = true);
    /// Whether the loop steps the simulation; true at first.
    bool getAutoStepping() const;

    /// Whether listeners are told of frames while paused too; true at first. Remote services are always served.
    void setEnablePauseUpdate(bool enable);
    /// Whether listeners are told of frames while paused.
    bool getEnablePauseUpdate() const;

    /// Pauses the simulation when the two bodies touch. Throws std::invalid_argument for null.
    void addAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2);
    /// Pauses the simulation when the two geometries touch. Throws std::invalid_argument for null.
    void addAutoPausePair(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2);
    /// Forgets the pair, in either order; an unknown pair is ignored.
    void removeAutoPausePair(hyx::RigidBody const* body1, hyx::RigidBody const* body2);
    /// Forgets the pair, in either order; an unknown pair is ignored.
    void removeAutoPausePair(hyxCollide::Geometry const* geometry1, hyxCollide::Geometry const* geometry2);
    /// Switches auto pausing on or off without forgetting the pairs.
    void setEnableAutoPausing(bool enable);
    /// Whether auto pausing is on; true at first.
    bool getEnableAutoPausing() const;

    /// Chooses the solver and gives it to the simulation. Throws std::invalid_argument for a value that is none.
    void setSolverType(hyxOSG::ExampleApplication::SolverType solverType);
    /// The solver in use.
    hyxOSG::ExampleApplication::SolverType getSolverType() const;
    /// The solver called `name` (letter case ignored); `NUM_SOLVERS` for an unknown name.
    hyxOSG::ExampleApplication::SolverType getSolverType(std::string const& name) const;
    /// The name of `solverType`; empty for a value that is none.
    std::string getSolverName(hyxOSG::ExampleApplication::SolverType solverType) const;
    /// Goes to the next solver, after the last to the first.
    void changeSolver();

    /// A copy of the callback that is called after each simulation step.
    hyx::Callback getStepCallback() const;
    /// Has `callback` called after each simulation step; an empty one for none.
    void setStepCallback(hyx::Callback callback);

    /// Whether closing the window, or Escape, ends the loop; true at first.
    void setQuitEventSetsDone(bool enable);
    /// Whether closing the window, or Escape, ends the loop.
    bool getQuitEventSetsDone() const;

    /// The lock that is held while a frame is made; for native code on other threads. Never null.
    std::mutex* getFrameMutex();

    /// The simulation, made when there is none yet. Never null.
    hyxSDK::Simulation* getSimulation();
    /// The acceleration of gravity of the simulation in m/s^2.
    hyx::Vec3 getGravity();

    /// Has `listener` told of each frame; null and a listener that is already there are ignored. A reference is kept.
    void addListener(hyxOSG::ExampleApplicationListener* listener);
    /// Tells `listener` of nothing more, from now on. Returns whether it was there.
    bool removeListener(hyxOSG::ExampleApplicationListener* listener);

    // ---- Scenes

    /// Adds the scene that the function `scriptFunction` of the script `fileName` builds, reached by `key`. Returns
    /// false, and adds nothing, when the key is taken or the description is not valid.
    bool addScene(std::string const& fileName, std::string const& scriptFunction, int key, bool unittest = true,
                  float stopAfter = -1.0f, bool slowUnittest = false);
    /// Adds a script's scene under the next free of the keys '1'..'9', '0', 'a'..'z'.
    bool addScene(std::string const& fileName, std::string const& scriptFunction, bool unittest = true,
                  float stopAfter = -1.0f, bool slowUnittest = false);
    /// Adds a scene built by a native function, reached by `key`.
    bool addScene(hyxOSG::BuildScenePtr scene, int key, bool unittest = true, float stopAfter = -1.0f,
                  bool slowUnittest = false);
    /// Adds a scene built by a native function under the next free key.
    bool addScene(hyxOSG::BuildScenePtr scene, bool unittest = true, float stopAfter = -1.0f,
                  bool slowUnittest = false);
    /// Adds a copy of `description` under the next free key.
    bool addScene(hyxOSG::SceneDescription description);
    /// Adds a copy of `description` under `key`.
    bool addScene(hyxOSG::SceneDescription description, int key);

    /// Forgets all scenes that were added; the one that is shown stays.
    void clearAddedScenes();
    /// Number of scenes added.
    size_t getNumScenes() const;
    /// Builds the scene of `key` in place of the present one. Returns false for an unknown key and for a scene that
    /// was not built.
    bool createSceneFromKey(int key);
    /// Builds scene number `index`, counted from 0 in the order added. With `keepCamera` the camera stays. Returns
    /// false for an index out of range and for a scene that was not built.
    bool createSceneFromIndex(int index, bool keepCamera = false);
    /// Builds the present scene anew, its script read again, with the camera as it is.
    void reloadScene();
    /// Does `change`, which builds a scene. What it throws, and an error that its script leaves, is printed and shown
    /// on the picture, and ends nothing; the scene that was there stays. Returns whether it went well.
    bool tryScene(std::function<void()> const& change);
    /// Why the scene that was tried last by a key or the remote page was not built; empty when it was.
    std::string getSceneError() const;
    /// Opens a file by its ending: a script (.py) with a function buildScene, a scene (.json), a robot or world (.urdf,
    /// .xml, .mjcf, .sdf, .world) or a model (.gltf, .obj, .stl and more) becomes a scene; a journal (.h5) is played,
    /// and a saved state (.state) restored, when the first scene has been built. Returns false for other endings;
    /// throws std::filesystem::filesystem_error when there is no such file, or a folder.
    bool openFile(std::string const& path);
    /// Opens a file in place of what is shown now, as dropping it on the window does: a scene is added and built, a
    /// journal played in an empty scene, a state restored. Returns whether that went well; the reason is otherwise
    /// `getSceneError`, which is on the picture. Throws std::filesystem::filesystem_error when there is no such file.
    bool showFile(std::string const& path);

    /// Builds the next scene, after the last the first.
    void createNextScene();
    /// Builds the previous scene, before the first the last.
    void createPreviousScene();
    /// Empties simulation, scene groups and decoration of what scenes put there; simulated time goes back to 0.
    void clearScene();
    /// Turns the camera so that the middle of the scene is in the middle of the picture.
    void centerScene();
    /// Moves the camera so that the whole scene is in the picture.
    void fitSceneIntoView();

    /// A copy of the scene with `key`; one that is not valid for an unknown key.
    hyxOSG::SceneDescription getCallback(int key) const;
    /// A copy of the scene number `index`; throws std::out_of_range when there are not so many.
    hyxOSG::SceneDescription getCallbackIdx(size_t index) const;

    /// The group that the present scene built; null for none.
    osg::Group* getScene();
    /// The group for a script's own nodes, emptied with the scene.
    osg::Group* getSceneRoot();
    /// The group for visuals that the library itself makes, emptied with the scene.
    osg::Group* getSceneHyxOSGRoot();
    /// The switch (`osg::Switch`) that shows or hides the scene.
    osg::Group* getSceneSwitch();
    /// The root of all that is drawn.
    osg::Group* getRoot();
    /// Shows `scene` in place of the present one; null shows none.
    void setScene(osg::Group* scene);

    /// The decoration of the scene: background, lights, shadows, text, logo.
    hyxOSG::SceneDecorator* getSceneDecorator();

    /// Where the state of the simulation is saved on key F12 and by the remote page.
    std::string getSaveSceneFilename() const;
    /// Restores a state saved to `fileName` into the simulation. Returns false when there is no such file; throws
    /// std::runtime_error for a damaged one, with the simulation as it was.
    bool restoreFromFile(std::string const& fileName);

    /// Tells running applications that the geometry of `node` has left its simulation, so that its visual goes too.
    static void registerRemovedGeometry(hyxOSG::GeometryNode* node);

    /// Makes or, with `remove`, takes away the visuals of an assembly that a journal brought. Null is ignored.
    void journalRenderLoader(hyxSDK::Assembly* assembly, bool remove);

    // ---- Camera and view

    /// The present view as a value.
    hyxOSG::CameraData getCameraData();
    /// Gives the camera the view `cameraData`; data that is not valid is ignored.
    void applyCameraData(hyxOSG::CameraData const& cameraData);

    /// Fills `eye`, `center` and `up` with the home position of the camera.
    void getCameraHome(hyx::Vec3& eye, hyx::Vec3& center, hyx::Vec3& up) const;
    /// Sets the home position of the camera and goes there. Throws std::invalid_argument when `eye` is `center`.
    void setCameraHome(hyx::Vec3 const& eye, hyx::Vec3 const& center, hyx::Vec3 const& up = hyx::Vec3(0, 0, 1));
    /// Whether a home position was set.
    bool isCameraHomeSet() const;

    /// Has the camera follow `node` from `distance` metres, at `azimuth` radians around Z (0 looks along +Y) and
    /// `elevation` radians above it. `mode` as below. Null ends the following.
    void setOrbitCamera(hyxOSG::GeometryNode* node, double distance, double azimuth, double elevation, int mode = 0);
    /// Has the camera follow `node`, looking from `eye` to `center` in the node's frame. `mode` 0 follows the centre,
    /// 1 the centre and the heading, 2 the whole rotation; others throw std::invalid_argument. Null ends the following.
    void setOrbitCamera(hyxOSG::GeometryNode* node, hyx::Vec3 const& eye, hyx::Vec3 const& center,
                        hyx::Vec3 const& up = hyx::Vec3(0, 0, 1), int mode = 0);

    /// The direction the camera looks, of length 1.
    hyx::Vec3 getViewDirection();
    /// The main camera; null before there is a viewer.
    osg::Camera* getCamera();
    /// The camera that draws into the texture of `getVideoCaptureRendertoTexture`; null for none.
    osg::Camera* getTextureCamera();
    /// The viewer; null before `initViewer`.
    osgViewer::Viewer* getViewer();
    /// The manipulator that moves the camera; null for none.
    osgGA::MatrixManipulator* getCameraManipulator();
    /// The manipulator that moves the camera; null for none.
    osgGA::MatrixManipulator const* getCameraManipulator() const;
    /// The handler that picks with the mouse; null for none.
    hyxOSG::PickHandler* getPickHandler();
    /// The handler that picks with the mouse; null for none.
    hyxOSG::PickHandler const* getPickHandler() const;

    /// Puts `transform` between world and picture: scene, grid and debug rendering are drawn through it.
    void setCoordinateSystemTransform(hyx::AffineMatrix4x4 const& transform);
    /// The transform between world and picture.
    hyx::AffineMatrix4x4 getCoordinateSystemTransform() const;
    /// Draws debug rendering through the inverse of `matrix`, for a simulation whose frame is moved against the
    /// picture.
    void setDebugRenderInverseMatrix(hyx::AffineMatrix4x4 const& matrix);
    /// Sets the size of a cell of the grid in metres; both must be positive.
    void setGridSize(hyx::Vec2 const& size);
    /// Size of a cell of the grid in metres.
    hyx::Vec2 getGridSize() const;
    /// Sets the number of cells in X and Y; 1 to 10000 each.
    void setGridResolution(hyx::Vec2u resolution);
    /// Number of cells in X and Y.
    hyx::Vec2u getGridResolution() const;
    /// Shows or hides the grid in the XY plane; hidden at first.
    void setEnableGrid(bool enable);
    /// Whether the grid is shown.
    bool getEnableGrid() const;
    /// Shows or hides the axes of the world: X red, Y green, Z blue; hidden at first.
    void setEnableCoordinateSystem(bool enable);
    /// Whether the axes of the world are shown.
    bool getEnableCoordinateSystem() const;

    // ---- Window and rendering

    /// Moves and sizes the window, in pixels. Returns false when there is no window yet or the size is not allowed.
    bool setWindowRectangle(unsigned int x, unsigned int y, unsigned int width, unsigned int height);
    /// Sets the title of the window. Returns false when there is no window yet; the title is used when there is.
    bool setWindowTitle(std::string const& title);
    /// Whether the user and `setWindowRectangle` may change the size of the window; true at first. Where the display
    /// lets users change it in spite of this, the window goes back to its size.
    void setAllowWindowResizing(bool allow);
    /// Whether the window may change its size.
    bool getAllowWindowResizing() const;
    /// Whether the window is off-screen.
    bool hasOffscreenWindow() const;
    /// The number of the native window; 0 for an off-screen one and for none.
    hyx::UInt getHWND() const;
    /// Waits for the display before each frame is shown. With `applyNow` a window that is there changes at once,
    /// otherwise the next window. Kept without effect off-screen.
    void setEnableVSync(bool enable, bool applyNow = true);
    /// Whether frames wait for the display; false at first.
    bool getEnableVSync() const;

    /// Smooths the edges in the next window with this many samples a pixel; 0 or 1 for none. Default 4.
    /// \throws std::invalid_argument for more than 16 and for negative numbers
    void setNumSamples(int samples);
    /// How many samples a pixel the window's driver gave; the number asked for while there is no window.
    int getNumSamples() const;
    /// Does what a key of the window does. Returns whether it does anything.
    bool followKey(int key);
    /// A line for each key that does something now, scene keys too: its name, and what it does.
    std::vector<std::string> getKeyHelp() const;
    /// Shows the keys on the picture; hidden at first.
    void setEnableHelp(bool enable);
    bool getEnableHelp() const;
    /// Shows the line of `getStatus` on the picture; hidden at first.
    void setEnableStatus(bool enable);
    bool getEnableStatus() const;
    /// The panel behind the keys, which belongs to the application (see `Panel::match`), as do the other three. What a
    /// script sets of its position and size in pixels stays, and the text goes with it.
    Panel& getHelpPanel();
    /// The panel behind the line of figures.
    Panel& getStatusPanel();
    /// The panel behind the last error of a scene.
    Panel& getErrorPanel();
    /// The panel behind the figures of the selected body.
    Panel& getSelectionPanel();
    /// The group that the panels stand on, in pixels from the lower left corner.
    osg::Group* getPanelGroup();
    /// A line of figures: scene, time, frames a second, real-time factor, costs, contacts.
    std::string getStatus() const;

    /// Selects a body of the simulation, as a click on it does: it has an outline, and `getSelectionText` is on the
    /// picture. Null selects none. Throws std::invalid_argument for a body of another simulation.
    void setSelection(hyx::RigidBody* body);
    /// The selected body; null for none.
    hyx::RigidBody* getSelection();
    /// Name, mass, pose, velocities, and the forces at contacts and joints of the selected body, a line each; empty for
    /// none.
    std::string getSelectionText();

    /// Draws shapes, contacts, constraints, frames, and the forces of contacts and constraints as lines. Returns
    /// whether it is on afterwards.
    bool setEnableDebugRenderer(bool enable);
    /// Whether debug rendering is on.
    bool getEnableDebugRenderer() const;
    /// Adds the names of the bodies, as text, to debug rendering.
    void setEnableTextDebugRendering(bool enable);
    /// Whether debug rendering has text.
    bool getEnableTextDebugRendering() const;
    /// Draws the scene; off leaves debug rendering alone.
    void setEnableOSGRenderer(bool enable);
    /// Whether the scene is drawn.
    bool getEnableOSGRenderer() const;

    // ---- Journal

    /// The journal of this application. Never null; closed at first.
    hyx::Journal* getJournal();
    /// Path of the file that says what a journal holds; empty for none.
    std::string getJournalConfigurationPath() const;
    /// Path of the journal to play back; empty for none.
    std::string getJournalPlaybackPath() const;
    /// Path of the trace file of the profiling switches.
    std::string getProfilingJournalPath() const;
    /// Sets the file (JSON) that says what a journal holds: `velocities`, `contacts`, `frequency`,
    /// `session`.
    void setJournalConfigurationPath(hyx::String const& path);
    /// Sets the file that is recorded to, and the session's name after a `#`: `run.h5#first`.
    void setJournalRecordPath(hyx::String const& path);
    /// Records bodies that come or go while recording; otherwise those that were there at the start.
    void setEnableJournalIncrementalStructure(bool enable);
    /// Whether bodies that come or go are recorded.
    bool getEnableJournalIncrementalStructure() const;
    /// The format of new journals: 0, at first, is plain HDF5, 1 is compressed HDF5.
    hyx::UInt getJournalFormat() const;
    /// Chooses the format of new journals. Both are read by any program that reads HDF5; the compressed one takes less
    /// room and more time. Throws std::invalid_argument for others.
    void setJournalFormat(hyx::UInt format);
    /// Records in single precision: half the size.
    void setEnableJournal32bitMode(bool enable);
    /// Starts or stops recording to the path of `setJournalRecordPath`.
    void setEnableJournalRecord(bool enable);
    /// Sets how often a state is recorded, per simulated second; 0 for every step.
    void setRequestedJournalFrequency(double frequency);
    /// Records the present state as the first of the session, when recording.
    void storeInitialJournalState();
    /// Starts a new file for recording. Throws std::runtime_error when it cannot be written.
    void initRecordJournal();
    /// Starts a new session at the end of an existing file, or a new file.
    void initAppendJournal();
    /// Plays the journal back from now on: the loop shows its states in place of stepping the simulation.
    void journalPlayback();
    /// At the end of a journal that is played, begins again; false at first: then the loop pauses.
    void setEnableJournalLoop(bool enable);
    bool getEnableJournalLoop() const;
    /// Prints the names of the sessions in the journal `fileName`, one a line.
    void listSessionNames(std::string const& fileName);
    /// Writes what the loop does when, as a trace that common viewers open, to `getProfilingJournalPath`.
    void setEnableThreadTimeline(bool enable);
    /// Writes the sums of the times of the loop's tasks to the trace.
    void setEnableTaskProfile(bool enable);
    /// Writes the state of the simulation after each step to a folder beside the trace.
    void setEnableSimulationDump(bool enable);
    /// Whether the state of the simulation is written after each step.
    bool getEnableSimulationDump() const;

    // ---- Capture and render targets

    /// Draws a frame and writes it to `fileName` (png, jpg, bmp, ppm ... by its ending); empty gives
    /// `screenshot_0001.png` with the next free number, in the working folder. Throws
    /// std::filesystem::filesystem_error when it cannot be written; a file that was there before stays.
    void takeScreenShot(hyx::String const& fileName = "");
    /// Width and height of the pictures that `readPicture` gives. Opens the window where there is none.
    hyx::Vec2u getPictureSize();
    /// Writes what the window shows to `rgb`: three bytes a pixel, rows from the top, `size` as `getPictureSize` has
    /// it. With `fresh` a frame of the present state is drawn for it, without a step; otherwise it is the last frame,
    /// which is drawn now when nobody needed it so far. Throws std::invalid_argument for another size.
    void readPicture(unsigned char* rgb, hyx::Vec2u size, bool fresh);
    /// Draws the render targets as the state is now, without a step.
    void drawRenderTargets();
    /// The capture of numbered pictures; made on first use.
    hyxOSG::ImageCapture* getImageCapture();
    /// The capture of numbered pictures; null when it was not used yet.
    hyxOSG::ImageCapture const* getImageCapture() const;
    /// The capture into a film; made on first use.
    hyxOSG::VideoFFMPEGPipeCapture* getVideoServerCapture();
    /// Draws the scene into a texture too, for capture at a size of its own.
    void setupVideoCaptureRenderTotexture();
    /// The texture of `setupVideoCaptureRenderTotexture`; null before.
    hyxOSG::RenderToTexture* getVideoCaptureRendertoTexture();
    /// Captures by simulated time instead of each frame.
    void setEnableCaptureSyncWithSimulation(bool enable);
    /// Whether captures follow simulated time.
    bool getEnableCaptureSyncWithSimulation() const;
    /// Has `target` drawn each frame, of `node` or, for null, of the scene. A null target throws std::invalid_argument.
    void addRenderTarget(hyxOSG::RenderTarget* target, osg::Node* node = nullptr);
    /// Ends the drawing of `target`. Returns whether it was there.
    bool removeRenderTarget(hyxOSG::RenderTarget* target);

    // ---- Scripting, co-simulation and remote control

    /// Runs `function` of the script `file` with the simulation, the application and the scene root as arguments (as
    /// many as it takes) and returns the group it returned, or null. `ok` tells whether it ran; an error stays with the
    /// interpreter with the script's own traceback. A changed file is read again.
    osg::Group* executePythonScript(hyx::String const& file, hyx::String const& function, bool& ok);
    /// The script given by options, or the last one that a scene was built from.
    std::string getScriptFile() const;
    /// With `pause`, stops automatic stepping when scripts' callbacks left errors since the last call. They were
    /// printed when they came. The loop calls this without `pause` after each frame.
    void handleReactiveScriptErrors(bool pause = true);

    /// Whether another process steps the simulation.
    bool useCoSimulation() const;
    /// Serves the requests of the co-simulation that have arrived.
    void updateCoSimulationServer();
    /// Calls the function `function` of the main script with the text of `stream` and replaces that by its answer.
    /// Returns whether there is such a function.
    bool updatePythonCoSimulationServer(hyx::String const& function, std::stringstream& stream);
    /// Answers the call that `server` holds with a function of the main script. Returns whether there was one.
    bool coSimulationCallPython(hyxNet::CoSimulationServer* server);

    /// Serves the requests of the remote control that have arrived.
    void updateRemoteDebugger();
    /// Sends the picture of the present frame to the viewers that are connected.
    void pushFrameToRemoteViewer();
    /// The remote control; null before `initRpc`.
    hyxOSG::ExampleApplicationController* getController();
    /// The port of the remote control; 0 when it is not open.
    int getControlChannelPort() const;
    /// Sends the parameters to the remote pages that are connected.
    void pushParametersToControlChannel();
    /// Sends a signal at each step to the remote pages that are connected.
    void setEnableControlChannelTickSignals(bool enable);

    // ---- Modelling-language models

    /// Loads the robot description (URDF) at `path` into the simulation, with visuals under `root` (null for none).
    /// What could not be read is listed in the result; then the simulation is as before.
    hyxtavlang::LoadResult loadTavLangFile(std::string path, osg::Group* root,
                                           hyxtavlang::OptParams params = hyxtavlang::OptParams());
    /// The folders that models are looked for in: those of the options, the environment variable HYX_BUNDLE_PATH and
    /// `additionalPaths`.
    std::vector<std::string> getTavLangBundlePaths(std::vector<std::string> additionalPaths = {}) const;
    /// The name of the model to load from a file; empty for its only one.
    std::string getTavLangModelName() const;
    /// Sets the name of the model to load.
    void setTavLangModelName(std::string name);
    /// Whether loaded models show the frames of their links.
    bool getTavLangDebugRenderFrames() const;
    /// Whether another process can drive the joints of loaded models: `initRpc` has opened what the option
    /// `--click-port` asks for.
    bool getTavLangUseClick() const;
    /// The address at which the joints of loaded models are served; empty while they are not.
    std::string getTavLangClickServerAddr() const;

    AutoStepEvent autoStepEvent;    ///< raised when automatic stepping is switched
    bool m_loadedSceneFile = false; ///< whether the present scene came from a file
    bool m_isLoadingScene = false;  ///< whether a scene is being built now
    /// Whether a master outside steps the simulation: the loop then draws and serves, but does not step.
    bool m_isFMU = false;
    hyx::Event m_sceneLoadEvent; ///< raised after a scene was built
    std::string m_hostName;      ///< the address that remote services listen on, such as 0.0.0.0; empty for loopback

protected:
    ~ExampleApplication() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
