"""Exceptions that end a batch. A document never does; its report has a problem instead."""

from ztcad._errors import Error


class ClusterError(Error):
    """The scheduler is lost, or the work was cancelled. Reports that were yielded before are valid."""


class NoWorkersError(ClusterError):
    """The cluster had no worker for longer than was allowed."""
