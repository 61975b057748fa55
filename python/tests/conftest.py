import pytest

import kobwbx


@pytest.fixture
def f():
    factory = kobwbx.Factory()
    yield factory
    factory.close()


@pytest.fixture
def xy(f):
    return f.variable("x"), f.variable("y")
