// The state of many bodies, joints and contacts at once, as arrays.
#include "binding/vocabulary/number_arrays.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"

#include <cmath>
#include <string>
#include <unordered_map>

namespace {

using hyx::Constraint1DOF;
using hyx::RigidBody;
using hyxSDK::Simulation;

// Native objects, and what keeps them where an iterable gave them.
template <class Object>
struct Chosen {
    runtime::Reference items;
    std::vector<Object*> natives;
};

// The objects that an iterable shows; `all` adds those for None.
template <class Object, class All>
Chosen<Object> chosen(PyObject* objects, All const& all) {
    Chosen<Object> result;
    if (!objects || objects == Py_None) {
        all(result.natives);
        return result;
    }
    auto& items = result.items =
        vocabulary::read_items(objects, "expected a sequence of bodies or joints, or None for all");
    result.natives.reserve(static_cast<std::size_t>(PyTuple_GET_SIZE(items.get())));
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        PyObject* const item = PyTuple_GET_ITEM(items.get(), i);
        void* native = nullptr;
        if (SWIG_Python_ConvertPtrAndOwn(item, &native, vocabulary::descriptor<Object>()) < 0 || !native) {
            PyErr_Format(PyExc_TypeError, "expected items of type %s, not %s",
                         vocabulary::TypeName<Object>::text.data(), Py_TYPE(item)->tp_name);
            throw vocabulary::PythonError();
        }
        result.natives.push_back(static_cast<Object*>(native));
    }
    return result;
}

Chosen<RigidBody> bodies_of(Simulation const& self, PyObject* bodies) {
    return chosen<RigidBody>(bodies, [&](auto& all) {
        for (auto const& body : self.getRigidBodies())
            all.push_back(body);
    });
}

// Those with one free direction, in their order.
Chosen<Constraint1DOF> joints_of(Simulation const& self, PyObject* joints) {
    return chosen<Constraint1DOF>(joints, [&](auto& all) {
        for (hyx::Constraint* constraint : self.getConstraints())
            if (auto* const joint = dynamic_cast<Constraint1DOF*>(constraint))
                all.push_back(joint);
    });
}

// What one member function gives of each, a row of numbers or one number.
template <class Object, class Get>
PyObject* read_each(Chosen<Object> const& objects, std::size_t columns, Get const& get) {
    return vocabulary::new_array<double>(objects.natives.size(), columns, [&](double* to) {
        for (Object* object : objects.natives) {
            auto const value = get(*object);
            if constexpr (std::is_arithmetic_v<decltype(value)>)
                *to++ = value;
            else
                to = std::copy_n(value.ptr(), columns, to);
        }
    });
}

// Checked as a whole before the first is set. One row serves all. The values are read first: that may run a script,
// which could end what was chosen.
template <class Choose, class Set>
void set_each(PyObject* values, std::size_t columns, Choose const& choose, Set const& set) {
    std::vector<double> const numbers =
        columns == 1 ? vocabulary::read_all_numbers(values) : vocabulary::read_rows(values, columns);
    auto const chosen = choose();
    auto const& objects = chosen.natives;
    std::size_t const rows = numbers.size() / columns;
    if (rows != objects.size() && rows != 1)
        throw std::invalid_argument("give one row for all or " + std::to_string(objects.size()) + " rows, not " +
                                    std::to_string(rows));
    for (double const number : numbers)
        if (!std::isfinite(number))
            throw std::invalid_argument("the state of bodies and joints must be finite numbers");
    for (std::size_t i = 0; i < objects.size(); ++i)
        set(*objects[i], numbers.data() + (rows == 1 ? 0 : i * columns));
}

template <auto Get>
PyObject* of_bodies(Simulation const& self, PyObject* bodies) {
    auto const get = [](RigidBody const& body) { return (body.*Get)(); };
    return read_each(bodies_of(self, bodies), decltype(get(std::declval<RigidBody&>()))::size(), get);
}

template <auto Set>
void set_vectors(Simulation& self, PyObject* values, PyObject* bodies) {
    set_each(
        values, 3, [&] { return bodies_of(self, bodies); },
        [](RigidBody& body, double const* row) { (body.*Set)(hyx::Vec3(row[0], row[1], row[2])); });
}

void set_rotations(Simulation& self, PyObject* values, PyObject* bodies) {
    set_each(
        values, 4, [&] { return bodies_of(self, bodies); },
        [](RigidBody& body, double const* row) { body.setRotation(hyx::Quat(row[0], row[1], row[2], row[3])); });
}

// A row of position and rotation (x y z, x y z w) for each body, in the order of getRigidBodies.
PyObject* poses(Simulation const& self) {
    auto const& bodies = self.getRigidBodies();
    return vocabulary::new_array<double>(bodies.size(), 7, [&](double* to) {
        for (auto const& body : bodies) {
            to = std::copy_n(body->getPosition().ptr(), 3, to);
            to = std::copy_n(body->getRotation().ptr(), 4, to);
        }
    });
}

// Radians or metres.
PyObject* joint_positions(Simulation const& self, PyObject* joints) {
    return read_each(joints_of(self, joints), 0, [](Constraint1DOF& joint) { return joint.getAngle(); });
}

PyObject* joint_speeds(Simulation const& self, PyObject* joints) {
    return read_each(joints_of(self, joints), 0, [](Constraint1DOF& joint) { return joint.getCurrentSpeed(); });
}

// What motors are to reach; they are switched on by the script.
void set_motor_speeds(Simulation& self, PyObject* values, PyObject* joints) {
    set_each(
        values, 1, [&] { return joints_of(self, joints); },
        [](Constraint1DOF& joint, double const* speed) { joint.getMotor1D()->setSpeed(*speed); });
}

// What locks are to hold.
void set_lock_positions(Simulation& self, PyObject* values, PyObject* joints) {
    set_each(
        values, 1, [&] { return joints_of(self, joints); },
        [](Constraint1DOF& joint, double const* position) { joint.getLock1D()->setPosition(*position); });
}

// One column of all contact points.
template <class Number, class Write>
PyObject* of_points(hyxCollide::LocalGeometryContactVector const& contacts, std::size_t count, std::size_t columns,
                    Write const& write) {
    return vocabulary::new_array<Number>(count, columns, [&](Number* to) {
        for (auto const& contact : contacts)
            for (auto const& point : contact.points())
                to = write(to, contact, point);
    });
}

// All contact points of the last step: "bodies" (places in getRigidBodies; -1 for none), "points", "normals", "depths",
// "forces" (newtons, a vector).
PyObject* contact_arrays(Simulation const& self) {
    using hyxCollide::ContactPoint;
    using hyxCollide::LocalGeometryContact;
    hyxCollide::LocalGeometryContactVector const contacts = self.getSpace()->getGeometryContacts();
    std::size_t count = 0;
    for (auto const& contact : contacts)
        count += contact.points().size();
    std::unordered_map<RigidBody const*, int> places;
    for (auto const& body : self.getRigidBodies())
        places.emplace(body, static_cast<int>(places.size()));
    auto const place = [&](RigidBody const* body) {
        auto const found = places.find(body);
        return found == places.end() ? -1 : found->second;
    };
    auto const vectors = [&](auto const& read) {
        return of_points<double>(contacts, count, 3, [&](double* to, auto const&, ContactPoint const& point) {
            return std::copy_n(read(point).ptr(), 3, to);
        });
    };
    return Py_BuildValue("{sNsNsNsNsN}", "bodies",
                         of_points<int>(contacts, count, 2,
                                        [&](int* to, LocalGeometryContact const& contact, ContactPoint const&) {
                                            *to++ = place(contact.getRigidBody(0));
                                            *to++ = place(contact.getRigidBody(1));
                                            return to;
                                        }),
                         "points", vectors([](ContactPoint const& point) { return point.point; }), "normals",
                         vectors([](ContactPoint const& point) { return point.normal; }), "depths",
                         of_points<double>(contacts, count, 0,
                                           [](double* to, auto const&, ContactPoint const& point) {
                                               *to++ = point.depth;
                                               return to;
                                           }),
                         "forces", vectors([](ContactPoint const& point) { return point.getForce(); }));
}

#define GET_ARRAY(name_, read_) \
    FUNCTION(Simulation_##name_, ADAPTER(hyxSDK::Simulation, name_, read_, (PyObject*) const, nullptr))
#define SET_ARRAY(name_, write_) \
    FUNCTION(Simulation_##name_, ADAPTER(hyxSDK::Simulation, name_, write_, (PyObject*, PyObject*), nullptr))

constexpr Declared simulation_arrays_rows[] = {
    FUNCTION(Simulation_getPoses, ADAPTER(hyxSDK::Simulation, getPoses, poses, () const)),
    GET_ARRAY(getPositions, of_bodies<&RigidBody::getPosition>),
    SET_ARRAY(setPositions, set_vectors<&RigidBody::setPosition>),
    GET_ARRAY(getRotations, of_bodies<&RigidBody::getRotation>),
    SET_ARRAY(setRotations, set_rotations),
    GET_ARRAY(getVelocities, of_bodies<&RigidBody::getVelocity>),
    SET_ARRAY(setVelocities, set_vectors<&RigidBody::setVelocity>),
    GET_ARRAY(getAngularVelocities, of_bodies<&RigidBody::getAngularVelocity>),
    SET_ARRAY(setAngularVelocities, set_vectors<&RigidBody::setAngularVelocity>),
    GET_ARRAY(getForces, of_bodies<&RigidBody::getForce>),
    SET_ARRAY(addForces, set_vectors<&RigidBody::addForce>),
    GET_ARRAY(getTorques, of_bodies<&RigidBody::getTorque>),
    SET_ARRAY(addTorques, set_vectors<&RigidBody::addTorque>),
    GET_ARRAY(getJointPositions, joint_positions),
    GET_ARRAY(getJointSpeeds, joint_speeds),
    SET_ARRAY(setMotorSpeeds, set_motor_speeds),
    SET_ARRAY(setLockPositions, set_lock_positions),
    FUNCTION(Simulation_getContactArrays, ADAPTER(hyxSDK::Simulation, getContactArrays, contact_arrays, () const)),
};

} // namespace

ROWS(simulation_arrays_rows);
